#pragma once
// Text recognition on one picture, in the shape the platform's recogniser gives it: a list of
// observations, each with its best candidate strings and a box normalised to the picture.

#include <optional>
#include <string>
#include <vector>

#include "model/Geometry.h"
#include "model/Image.h"

namespace zd {

struct RecognizedText {
    std::string string;
    // 0 to 1, higher is surer.
    float confidence = 0;
};

struct TextObservation {
    // Best candidate first; may be empty.
    std::vector<RecognizedText> topCandidates;
    // Normalised to 0…1 of the picture, origin at the lower left, y upward.
    Rect boundingBox;
};

struct TextRecognitionOptions {
    // The slower, more accurate recogniser rather than the fast one.
    bool accurate = true;
    // Whether dictionaries and language models may correct what was read.
    bool usesLanguageCorrection = false;
};

class TextRecognitionBackend {
  public:
    virtual ~TextRecognitionBackend() = default;

    // Reads the text in `image`. Blocks until done. None when recognition itself failed.
    virtual std::optional<std::vector<TextObservation>> recognize(
        const Image& image, const TextRecognitionOptions& options) = 0;
};

}  // namespace zd
