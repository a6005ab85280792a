#include "TesseractTextRecognitionBackend.h"

#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

#include <cstdlib>
#include <filesystem>

namespace zd::x11 {

namespace {

// Where Debian's tesseract looks for its data unless told otherwise.
std::filesystem::path dataFolder() {
    if (const char* prefix = std::getenv("TESSDATA_PREFIX"); prefix && *prefix)
        return prefix;
    for (const char* folder :
         {"/usr/share/tesseract-ocr/5/tessdata", "/usr/share/tesseract-ocr/4.00/tessdata"}) {
        if (std::filesystem::exists(folder))
            return folder;
    }
    return {};
}

std::string installedLanguages() {
    const auto folder = dataFolder();
    std::string list;
    for (const char* language : {"eng", "deu", "fra", "jpn"}) {
        if (std::filesystem::exists(folder / (std::string(language) + ".traineddata"))) {
            list += (list.empty() ? "" : "+") + std::string(language);
        }
    }
    return list;
}

// Tesseract separates groups of CJK glyphs by spaces, where the writing has none.
bool isWide(const std::string& text, std::size_t at) {
    // Lead bytes of three-byte sequences from U+3000 up cover kana, CJK and full-width forms.
    const auto c = static_cast<unsigned char>(text[at]);
    return c >= 0xE3 && c <= 0xEF;
}

std::string joinedCjk(const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == ' ' && !out.empty() && i + 1 < text.size()) {
            // Previous character's lead byte: walk back over continuation bytes.
            std::size_t lead = out.size() - 1;
            while (lead > 0 && (static_cast<unsigned char>(out[lead]) & 0xC0) == 0x80)
                --lead;
            if (isWide(out, lead) && isWide(text, i + 1))
                continue;
        }
        out.push_back(text[i]);
    }
    return out;
}

}  // namespace

TesseractTextRecognitionBackend::TesseractTextRecognitionBackend(std::string languages)
    : languages_(languages.empty() ? installedLanguages() : std::move(languages)) {}

TesseractTextRecognitionBackend::~TesseractTextRecognitionBackend() {
    if (api_)
        api_->End();
}

bool TesseractTextRecognitionBackend::ready(bool usesLanguageCorrection) {
    if (api_ && initialisedWithCorrection_ == usesLanguageCorrection)
        return true;
    if (api_)
        api_->End();
    api_ = std::make_unique<tesseract::TessBaseAPI>();
    if (languages_.empty())
        return false;
    // The word lists are loaded (or not) at start only.
    const std::string dawg = usesLanguageCorrection ? "1" : "0";
    const std::vector<std::string> names{"load_system_dawg", "load_freq_dawg", "debug_file"};
    const std::vector<std::string> values{dawg, dawg, "/dev/null"};
    const std::string folder = dataFolder().string();
    if (api_->Init(folder.empty() ? nullptr : folder.c_str(), languages_.c_str(),
                   tesseract::OEM_LSTM_ONLY, nullptr, 0, &names, &values, false) != 0) {
        api_.reset();
        return false;
    }
    initialisedWithCorrection_ = usesLanguageCorrection;
    api_->SetPageSegMode(tesseract::PSM_SPARSE_TEXT);
    return true;
}

std::optional<std::vector<TextObservation>> TesseractTextRecognitionBackend::recognize(
    const Image& image, const TextRecognitionOptions& options) {
    if (image.isNull())
        return std::nullopt;
    std::lock_guard lock(mutex_);
    // Only the accurate (LSTM) engine is loaded: the fast choice reads with it as well.
    if (!ready(options.usesLanguageCorrection))
        return std::nullopt;

    // RGB over white: transparent parts of a picture read as paper, not as black.
    const int width = image.width();
    const int height = image.height();
    std::vector<unsigned char> rgb(static_cast<std::size_t>(width) *
                                   static_cast<std::size_t>(height) * 3);
    std::size_t o = 0;
    for (const std::uint32_t p : image.pixels()) {
        const std::uint32_t inverse = 255 - Image::alphaOf(p);
        rgb[o++] = static_cast<unsigned char>(Image::redOf(p) + inverse);
        rgb[o++] = static_cast<unsigned char>(Image::greenOf(p) + inverse);
        rgb[o++] = static_cast<unsigned char>(Image::blueOf(p) + inverse);
    }
    api_->SetImage(rgb.data(), width, height, 3, width * 3);
    api_->SetSourceResolution(144);
    if (api_->Recognize(nullptr) != 0) {
        api_->Clear();
        return std::nullopt;
    }

    // Words, grouped into observations: a line breaks where the gap between two words is
    // wider than the text is high, as between two menu titles, not between two words of one.
    struct Group {
        int left = 0, top = 0, right = 0, bottom = 0;
        std::string text;
        float confidence = 100;
    };
    std::vector<Group> groups;
    std::unique_ptr<tesseract::ResultIterator> it(api_->GetIterator());
    constexpr auto word = tesseract::RIL_WORD;
    if (it && !it->Empty(word)) {
        do {
            int left = 0, top = 0, right = 0, bottom = 0;
            if (!it->BoundingBox(word, &left, &top, &right, &bottom))
                continue;
            std::unique_ptr<char[]> text(it->GetUTF8Text(word));
            if (!text || !*text.get())
                continue;
            const std::string piece(text.get());
            const bool newLine = it->IsAtBeginningOf(tesseract::RIL_TEXTLINE);
            if (groups.empty() || newLine ||
                left - groups.back().right >
                    std::max(bottom - top, groups.back().bottom - groups.back().top)) {
                groups.push_back({left, top, right, bottom, piece, it->Confidence(word)});
                continue;
            }
            Group& g = groups.back();
            g.text = joinedCjk(g.text + " " + piece);
            g.left = std::min(g.left, left);
            g.top = std::min(g.top, top);
            g.right = std::max(g.right, right);
            g.bottom = std::max(g.bottom, bottom);
            g.confidence = std::min(g.confidence, it->Confidence(word));
        } while (it->Next(word));
    }
    std::vector<TextObservation> observations;
    for (const auto& g : groups) {
        TextObservation observation;
        observation.boundingBox =
            Rect{static_cast<double>(g.left) / width, 1.0 - static_cast<double>(g.bottom) / height,
                 static_cast<double>(g.right - g.left) / width,
                 static_cast<double>(g.bottom - g.top) / height};
        observation.topCandidates.push_back({g.text, g.confidence / 100.0f});
        observations.push_back(std::move(observation));
    }
    api_->Clear();
    return observations;
}

}  // namespace zd::x11
