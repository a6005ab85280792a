#pragma once
// Text recognition as a script: every picture gets `result`; the options asked for are kept.

#include <vector>

#include "env/TextRecognitionBackend.h"

namespace zd::testing {

class FakeTextRecognitionBackend : public TextRecognitionBackend {
  public:
    std::optional<std::vector<TextObservation>> recognize(
        const Image&, const TextRecognitionOptions& options) override {
        optionsSeen.push_back(options);
        return result;
    }

    std::optional<std::vector<TextObservation>> result = std::vector<TextObservation>{};
    std::vector<TextRecognitionOptions> optionsSeen;
};

}  // namespace zd::testing
