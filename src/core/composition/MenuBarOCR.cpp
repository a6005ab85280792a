#include "composition/MenuBarOCR.h"

#include <algorithm>
#include <cmath>

#include "composition/Canvas.h"
#include "env/CanvasFactory.h"
#include "env/CaptureBackend.h"

#include "model/TrimmedText.h"
namespace zd::MenuBarOCR {

namespace {

std::string trimmed(std::string_view text) {
    return std::string(trimmedText(text));
}

// Lower case of the code points whose case the menus of Latin, Greek and Cyrillic scripts
// use; other scripts have no case and pass as they are.
char32_t folded(char32_t c) {
    if ((c >= U'A' && c <= U'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7))
        return c + 0x20;
    if (c >= 0x100 && c <= 0x17F && c != 0x130 && c != 0x138 && c != 0x149 && c != 0x17F) {
        // Latin Extended-A alternates upper and lower case, with one shift of parity at ĸ.
        const bool upperAtEven = c < 0x138 || c > 0x178;
        if (upperAtEven ? (c % 2 == 0) : (c % 2 == 1))
            return c + 1;
        return c;
    }
    if (c >= 0x391 && c <= 0x3AB && c != 0x3A2)
        return c + 0x20;
    if (c >= 0x410 && c <= 0x42F)
        return c + 0x20;
    if (c >= 0x400 && c <= 0x40F)
        return c + 0x50;
    return c;
}

// Decodes UTF-8 leniently: a byte that starts no valid sequence stands for itself.
std::u32string foldedCodePoints(std::string_view text) {
    std::u32string out;
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        std::size_t length = lead < 0x80           ? 1
                             : (lead >> 5) == 0x6  ? 2
                             : (lead >> 4) == 0xE  ? 3
                             : (lead >> 3) == 0x1E ? 4
                                                   : 1;
        if (i + length > text.size())
            length = 1;
        char32_t c = length == 1 ? lead : lead & (0x7F >> length);
        for (std::size_t k = 1; k < length; ++k) {
            c = (c << 6) | (static_cast<unsigned char>(text[i + k]) & 0x3F);
        }
        out.push_back(folded(c));
        i += length;
    }
    return out;
}

bool containsIgnoringCase(std::string_view text, std::string_view part) {
    return foldedCodePoints(text).find(foldedCodePoints(part)) != std::u32string::npos;
}

WindowCaptureConfiguration configurationFor(const Rect& frame) {
    WindowCaptureConfiguration configuration;
    configuration.width = std::max(static_cast<int>(captureScale * frame.width), 1);
    configuration.height = std::max(static_cast<int>(captureScale * frame.height), 1);
    configuration.showsCursor = false;
    configuration.capturesAudio = false;
    configuration.scalesToFit = false;
    return configuration;
}

struct StatusCapture {
    Image image;
    Rect frame;
};

}  // namespace

double statusItemsLeftFraction(const Rect& bar, const std::vector<Rect>& statusFrames) {
    if (statusFrames.empty() || !(bar.width > 0))
        return 1.0;
    double leftmost = statusFrames.front().minX();
    for (const Rect& frame : statusFrames)
        leftmost = std::min(leftmost, frame.minX());
    return std::clamp((leftmost - bar.minX()) / bar.width, 0.0, 1.0);
}

std::vector<Item> itemsFrom(const std::vector<TextObservation>& observations) {
    std::vector<Item> items;
    for (const auto& observation : observations) {
        if (observation.topCandidates.empty())
            continue;
        items.push_back({observation.topCandidates.front().string, observation.boundingBox.minX()});
    }
    return items;
}

std::vector<std::string> titlesFrom(std::vector<Item> items, std::string_view appName) {
    std::erase_if(items, [](const Item& item) { return !(item.x < titleRegionEnd); });
    std::stable_sort(items.begin(), items.end(),
                     [](const Item& a, const Item& b) { return a.x < b.x; });
    const std::string name = trimmed(appName);
    std::vector<std::string> titles;
    for (const auto& item : items) {
        std::string text = trimmed(item.text);
        if (text.empty())
            continue;
        // The application's own bold name stands first and is supplied separately; a menu
        // with the name in its title goes with it.
        if (!name.empty() && (text == name || containsIgnoringCase(text, name)))
            continue;
        titles.push_back(std::move(text));
    }
    return titles;
}

Task<std::optional<MenuBarCapture>> captureMenuBarImage(Environment env) {
    CaptureBackend& capture = *env.capture;
    auto content =
        co_await onWorker(*env.workers, [&capture] { return capture.shareableContent(); });
    if (!content)
        co_return std::nullopt;

    const auto& windows = content->windows;
    const auto bar = std::find_if(windows.begin(), windows.end(), [](const ShareableWindow& w) {
        return w.windowLayer == menuBarWindowLevel;
    });
    if (bar == windows.end())
        co_return std::nullopt;
    const Rect barFrame = bar->frame;

    auto barImage = co_await onWorker(*env.workers, [&capture, &bar, &barFrame] {
        return capture.captureWindow(*bar, configurationFor(barFrame));
    });
    if (!barImage)
        co_return std::nullopt;

    // Status items of another display's bar don't count.
    std::vector<const ShareableWindow*> statusWindows;
    for (const auto& window : windows) {
        if (window.windowLayer == statusItemWindowLevel &&
            !window.frame.intersection(barFrame).isEmpty()) {
            statusWindows.push_back(&window);
        }
    }
    std::vector<StatusCapture> statusCaptures;
    std::vector<Rect> statusFrames;
    for (const ShareableWindow* window : statusWindows) {
        statusFrames.push_back(window->frame);
        auto image = co_await onWorker(*env.workers, [&capture, window] {
            return capture.captureWindow(*window, configurationFor(window->frame));
        });
        if (image)
            statusCaptures.push_back({*image, window->frame});
    }

    MenuBarCapture result;
    result.statusItemsLeftFraction = statusItemsLeftFraction(barFrame, statusFrames);

    const int width = static_cast<int>(captureScale * barFrame.width);
    const int height = static_cast<int>(captureScale * barFrame.height);
    auto canvas = env.canvases->makeCanvas(width, height);
    if (!canvas)
        co_return std::nullopt;
    const Image& barPicture = *barImage;
    canvas->drawImage(barPicture, Rect{},
                      Rect{0, 0, static_cast<double>(barPicture.width()),
                           static_cast<double>(barPicture.height())},
                      CompositeOp::copy);
    for (const auto& status : statusCaptures) {
        const Rect& f = status.frame;
        // Screen frames run top-down; the canvas runs bottom-up.
        canvas->drawImage(status.image, Rect{},
                          Rect{(f.minX() - barFrame.minX()) * captureScale,
                               (barFrame.maxY() - f.maxY()) * captureScale, f.width * captureScale,
                               f.height * captureScale},
                          CompositeOp::sourceOver);
    }
    result.image = canvas->finish();
    co_return result;
}

Task<std::vector<std::string>> ocr(Environment env, Image cgImage, std::string appName) {
    TextRecognitionBackend& recognizer = *env.textRecognition;
    const auto observations = co_await onWorker(*env.workers, [&recognizer, &cgImage] {
        TextRecognitionOptions options;
        options.accurate = true;
        options.usesLanguageCorrection = false;
        return recognizer.recognize(cgImage, options);
    });
    if (!observations)
        co_return std::vector<std::string>{};
    co_return titlesFrom(itemsFrom(*observations), appName);
}

}  // namespace zd::MenuBarOCR
