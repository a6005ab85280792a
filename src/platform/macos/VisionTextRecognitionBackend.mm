#include "macos/VisionTextRecognitionBackend.h"

#import <Foundation/Foundation.h>
#import <Vision/Vision.h>

#include "macos/CGImagePixels.h"
#include "macos/ObjectValues.h"

namespace zd::mac {

namespace {
// How many candidates of each observation are read; the core looks at the best only.
constexpr NSUInteger candidatesRead = 1;
}  // namespace

std::optional<std::vector<TextObservation>> VisionTextRecognitionBackend::recognize(
    const Image& image, const TextRecognitionOptions& options) {
    @autoreleasepool {
        CGImageRef picture = createCGImage(image);
        if (picture == nullptr)
            return std::nullopt;
        VNRecognizeTextRequest* request = [[VNRecognizeTextRequest alloc] init];
        request.recognitionLevel = options.accurate ? VNRequestTextRecognitionLevelAccurate
                                                    : VNRequestTextRecognitionLevelFast;
        request.usesLanguageCorrection = options.usesLanguageCorrection;
        VNImageRequestHandler* handler = [[VNImageRequestHandler alloc] initWithCGImage:picture
                                                                                options:@{}];
        NSError* error = nil;
        const BOOL performed = [handler performRequests:@[ request ] error:&error];
        CGImageRelease(picture);
        if (!performed)
            return std::nullopt;
        std::vector<TextObservation> observations;
        for (VNRecognizedTextObservation* observation in request.results) {
            TextObservation entry;
            for (VNRecognizedText* candidate in [observation topCandidates:candidatesRead])
                entry.topCandidates.push_back({textOf(candidate.string), candidate.confidence});
            const CGRect box = observation.boundingBox;
            entry.boundingBox = {box.origin.x, box.origin.y, box.size.width, box.size.height};
            observations.push_back(std::move(entry));
        }
        return observations;
    }
}

}  // namespace zd::mac
