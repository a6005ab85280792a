#pragma once
// Text recognition with tesseract's LSTM engine and the language data Debian installs
// (English, German, French, Japanese, where present). Sparse-text page layout; words separated
// by more than the text's height (as menu titles are) become separate observations, each
// with a box normalised to the picture, origin at the lower left. Dictionaries are not
// loaded, so what is read is not corrected towards known words.

#include <memory>
#include <mutex>
#include <string>

#include "env/TextRecognitionBackend.h"

namespace tesseract {
class TessBaseAPI;
}

namespace zd::x11 {

class TesseractTextRecognitionBackend : public TextRecognitionBackend {
  public:
    // `languages` in tesseract's form ("eng+deu"); empty: every one of eng, deu, fra, jpn
    // whose data is installed.
    explicit TesseractTextRecognitionBackend(std::string languages = {});
    ~TesseractTextRecognitionBackend() override;

    std::optional<std::vector<TextObservation>> recognize(
        const Image& image, const TextRecognitionOptions& options) override;

  private:
    bool ready(bool usesLanguageCorrection);

    std::string languages_;
    std::unique_ptr<tesseract::TessBaseAPI> api_;
    bool initialisedWithCorrection_ = false;
    std::mutex mutex_;  // one recognition at a time: the engine isn't reentrant
};

}  // namespace zd::x11
