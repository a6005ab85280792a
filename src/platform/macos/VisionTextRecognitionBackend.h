#pragma once
// Text recognition through Vision's text request on one picture.

#include "env/TextRecognitionBackend.h"

namespace zd::mac {

class VisionTextRecognitionBackend : public TextRecognitionBackend {
  public:
    std::optional<std::vector<TextObservation>> recognize(
        const Image& image, const TextRecognitionOptions& options) override;
};

}  // namespace zd::mac
