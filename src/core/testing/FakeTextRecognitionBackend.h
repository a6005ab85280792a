#pragma once
// Text recognition as a script: every picture gets `result`; the pictures and options asked
// about are kept.

#include <vector>

#include "env/TextRecognitionBackend.h"

namespace zd::testing {

class FakeTextRecognitionBackend : public TextRecognitionBackend {
  public:
    std::optional<std::vector<TextObservation>> recognize(
        const Image& image, const TextRecognitionOptions& options) override {
        images.push_back(image);
        optionsSeen.push_back(options);
        return result;
    }

    std::optional<std::vector<TextObservation>> result = std::vector<TextObservation>{};
    std::vector<Image> images;
    std::vector<TextRecognitionOptions> optionsSeen;
};

}  // namespace zd::testing
