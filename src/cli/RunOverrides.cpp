#include "RunOverrides.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <regex>

#include "CliSupport.h"
#include "QtCanvasFactory.h"
#include "QtImageCodec.h"
#include "SettingKeys.h"
#include "env/SettingsStore.h"
#include "model/Preferences.h"
#include "ui/ContentView.h"

namespace zd::cli {

namespace {

const std::vector<std::string> hideable{"battery", "wifi", "spotlight", "control-center"};

std::optional<Color> parseColor(const std::string& text) {
    static const std::regex form("#?([0-9a-fA-F]{6})([0-9a-fA-F]{2})?");
    std::smatch match;
    if (!std::regex_match(text, match, form))
        return std::nullopt;
    auto channel = [](const std::string& hex, std::size_t at) {
        return std::stoi(hex.substr(at, 2), nullptr, 16) / 255.0;
    };
    const std::string rgb = match[1];
    const double alpha = match[2].matched ? channel(match[2], 0) : 1.0;
    return Color{channel(rgb, 0), channel(rgb, 2), channel(rgb, 4), alpha};
}

// A preset by its pixel size ("1280x800") or "current"; any other WxH is a custom canvas.
Expected<void, std::string> applyCanvas(const std::string& text, ContentView& view,
                                        std::ostream& warnings) {
    static const std::vector<std::pair<std::string, OutputSize>> presets{
        {"2880x1800", OutputSize::mas2880},
        {"2560x1600", OutputSize::mas2560},
        {"1440x900", OutputSize::mas1440},
        {"1280x800", OutputSize::mas1280},
        {"current", OutputSize::current}};
    for (const auto& [name, preset] : presets) {
        if (text == name) {
            view.outputSize = preset;
            return {};
        }
    }
    static const std::regex form("\\s*(-?[0-9]{1,9})\\s*(?:x|X|\u00d7)\\s*(-?[0-9]{1,9})\\s*");
    std::smatch match;
    if (!std::regex_match(text, match, form)) {
        return unexpected("--canvas: \"" + text +
                          "\" is neither WIDTHxHEIGHT nor one of 2880x1800, 2560x1600, "
                          "1440x900, 1280x800, current");
    }
    int width = std::stoi(match[1]);
    int height = std::stoi(match[2]);
    if (width < 1 || height < 1) {
        warnings << "zephyrdock: warning: a canvas of " << width << "\u00d7" << height
                 << " is raised to " << std::max(width, 1) << "\u00d7" << std::max(height, 1)
                 << "\n";
        width = std::max(width, 1);
        height = std::max(height, 1);
    }
    view.outputSize = OutputSize::custom;
    view.customCanvasWidth = width;
    view.customCanvasHeight = height;
    return {};
}

// The canvas in effect, given or stored, must fit the bitmaps the renderer can make: else every
// shot would be taken only for the save to fail.
Expected<void, std::string> canvasDrawable(const ContentView& view) {
    if (view.outputSize != OutputSize::custom)
        return {};
    const long long width = std::max(view.customCanvasWidth, 1);
    const long long height = std::max(view.customCanvasHeight, 1);
    if (width <= QtCanvasFactory::kMaxSide && height <= QtCanvasFactory::kMaxSide &&
        width * height <= QtCanvasFactory::kMaxPixels)
        return {};
    return unexpected("a canvas of " + std::to_string(width) + "\u00d7" + std::to_string(height) +
                      " is larger than can be drawn: at most " +
                      std::to_string(QtCanvasFactory::kMaxSide) + " pixels a side and " +
                      std::to_string(QtCanvasFactory::kMaxPixels) + " pixels in all");
}

}  // namespace

void RunOverrides::addOptions(CLI::App& command, bool forRun) {
    command.add_option("--scope", scope, "single: one window; all: every visible window")
        ->check(CLI::IsMember({"single", "all"}));
    command
        .add_option("--languages", languages,
                    "Language codes, in order (de fr ja …); \"none\" (or \"\") for the "
                    "target's current language")
        ->expected(1, -1);
    command.add_option("--appearances", appearances, "light, dark or both")
        ->check(CLI::IsMember({"light", "dark"}))
        ->expected(1, 2);
    command.add_option("--canvas", canvas,
                       "2880x1800, 2560x1600, 1440x900, 1280x800, current, or any WIDTHxHEIGHT");
    command.add_option("--shadow", shadow, "Draw the window's shadow (true or false)");
    command.add_option("--background", background, "The background of both appearances")
        ->check(CLI::IsMember({"transparent", "color", "image"}));
    command.add_option("--background-color", backgroundColor,
                       "Fill colour as #RRGGBB or #RRGGBBAA (implies --background color)");
    command.add_option("--background-image", backgroundImage,
                       "Picture file for the background (implies --background image)");
    command.add_option("--menu-bar", menuBar, "Draw the synthetic menu bar (true or false)");
    command.add_option("--menu-bar-background", menuBarBackground,
                       "Give the menu bar its translucent strip (true or false)");
    command.add_option("--clock", clock, "The menu bar's clock text (default \"9:41 AM\")");
    command.add_option("--battery", battery, "The battery level shown, in percent")
        ->check(CLI::Range(0, 100));
    command.add_option("--hide", hide, "Leave these out of the menu bar")
        ->check(CLI::IsMember(hideable))
        ->expected(1, -1);
    command.add_flag("--real-accessories", realAccessories,
                     "Keep the captured right side of the menu bar instead of the drawn one");
    command
        .add_option("--store", storeName,
                    "mac-app-store: the composed canvas (default); flathub: the window alone "
                    "with its shadow on transparency, at most 1000x700 logical pixels")
        ->check(CLI::IsMember({"mac-app-store", "flathub"}));
    if (!forRun)
        return;
    command.add_option("--size", sizePreset, "How the target window is sized before capture")
        ->check(CLI::IsMember({"half", "threeQ", "full", "current"}));
    command.add_option("--countdown", countdown, "Seconds to pose the window before capture")
        ->check(CLI::Range(0, maxCountdownSeconds));
    command.add_flag_function(
        "--countdown-after-relaunch",
        [this](std::int64_t count) { countdownAfterRelaunch = count > 0; },
        "Count down again after each language switch (--countdown-after-relaunch=false: don't)");
    command
        .add_option("--destination", destination,
                    "new: a new run folder (the default); group: join the run folder with the "
                    "latest stamp of the same application under the save folder, or the one "
                    "given with --into")
        ->check(CLI::IsMember({"new", "group"}));
    command.add_option("--variant", variant,
                       "The variant's name: part of a new run folder's name, or the prefix of "
                       "the file names within a group");
    command.add_option("--into", into,
                       "The run folder a group joins (implies --destination group)");
    command.add_option("--save-folder", saveFolder, "Folder under which run folders are made");
    command.add_option("--screenshot-url", screenshotURL,
                       "With --store flathub: the web folder the images will be published in, "
                       "for screenshots.xml");
}

Expected<void, std::string> RunOverrides::applyTo(ContentView& view, std::ostream& warnings) const {
    // Contradictions first, before anything changes.
    if (!backgroundImage.empty() && !background.empty() && background != "image")
        return unexpected(std::string("--background-image contradicts --background ") + background);
    if (!backgroundColor.empty() && !background.empty() && background != "color")
        return unexpected(std::string("--background-color contradicts --background ") + background);
    if (!backgroundImage.empty() && !backgroundColor.empty())
        return unexpected(std::string("--background-image contradicts --background-color"));
    if (!into.empty() && destination == "new")
        return unexpected(std::string("--into contradicts --destination new"));
    // "none" and the empty code both mean the target's current language.
    auto current = [](const std::string& code) { return code.empty() || code == "none"; };
    if (languages.size() > 1 && std::any_of(languages.begin(), languages.end(), current))
        return unexpected(std::string("--languages none contradicts the other language codes"));

    if (!scope.empty())
        view.captureScope = *fromRawValue<CaptureScope>(scope);
    if (!storeName.empty())
        view.store = *fromRawValue<Store>(storeName);
    if (!screenshotURL.empty())
        view.screenshotBaseURL = screenshotURL;
    if (!languages.empty()) {
        view.languages.clear();
        for (const auto& code : languages) {
            if (!current(code))
                view.languages.push_back(LanguageCatalog::selection(code));
        }
    }
    if (!appearances.empty()) {
        view.enabledAppearances.clear();
        for (const auto& mode : appearances)
            view.enabledAppearances.insert(*fromRawValue<AppearanceMode>(mode));
    }
    if (!sizePreset.empty())
        view.sizePreset = *fromRawValue<WindowSizePreset>(sizePreset);
    if (!canvas.empty()) {
        if (auto applied = applyCanvas(canvas, view, warnings); !applied)
            return applied;
    }
    if (countdown)
        view.countdownSeconds = *countdown;
    if (countdownAfterRelaunch)
        view.countdownAfterRelaunch = *countdownAfterRelaunch;
    if (shadow)
        view.windowShadow = *shadow;

    std::optional<BackgroundKind> kind;
    if (!background.empty())
        kind = fromRawValue<BackgroundKind>(background);
    std::optional<Color> fill;
    if (!backgroundColor.empty()) {
        fill = parseColor(backgroundColor);
        if (!fill)
            return unexpected("--background-color: \"" + backgroundColor +
                              "\" is not a colour of the form #RRGGBB");
        kind = BackgroundKind::color;
    }
    std::optional<std::string> picture;
    if (!backgroundImage.empty()) {
        std::error_code error;
        auto absolute = std::filesystem::absolute(backgroundImage, error);
        picture = error ? backgroundImage : absolute.string();
        kind = BackgroundKind::image;
        const auto type = std::filesystem::status(*picture, error).type();
        std::string problem;
        if (type == std::filesystem::file_type::not_found)
            problem = "doesn't exist";
        else if (type == std::filesystem::file_type::directory)
            problem = "is a folder";
        else if (type != std::filesystem::file_type::regular)
            problem = "is not a regular file";
        else if (!QtImageCodec().load(*picture))
            problem = "can't be read as a picture (damaged, of an unknown kind, or too large)";
        if (!problem.empty()) {
            warnings << "zephyrdock: warning: the background picture " << *picture << " " << problem
                     << "; the background falls back to its fill colour\n";
        }
    }
    for (BackgroundChoice* choice : {&view.lightBackground, &view.darkBackground}) {
        if (kind)
            choice->kind = *kind;
        if (fill)
            choice->fillColor = *fill;
        if (picture)
            choice->url = picture;
    }

    if (menuBar)
        view.menuBar.visible = *menuBar;
    if (menuBarBackground)
        view.menuBar.hasBackground = *menuBarBackground;
    if (!clock.empty())
        view.menuBar.clockText = clock;
    if (battery)
        view.menuBar.batteryPercent = *battery;
    for (const auto& item : hide) {
        if (item == "battery")
            view.menuBar.showBattery = false;
        else if (item == "wifi")
            view.menuBar.showWiFi = false;
        else if (item == "spotlight")
            view.menuBar.showSpotlight = false;
        else if (item == "control-center")
            view.menuBar.showControlCenter = false;
    }
    if (realAccessories)
        view.menuBar.replaceAccessories = false;
    if (!destination.empty())
        view.destinationMode = *fromRawValue<DestinationMode>(destination);
    if (!into.empty()) {
        view.destinationMode = DestinationMode::group;
        view.lastRunRoot = absolutePath(into);
    }
    view.variantName = variant;
    return canvasDrawable(view);
}

void RunOverrides::store(const ContentView& view, SettingsStore& settings) const {
    // Through the same writers as the window's controls, so each key has one writer.
    namespace P = Preferences;
    if (!scope.empty())
        P::setCaptureScope(settings, view.captureScope);
    if (!sizePreset.empty())
        P::setWindowSizePreset(settings, view.sizePreset);
    if (!appearances.empty()) {
        P::setCaptureLight(settings, view.enabledAppearances.count(AppearanceMode::light) > 0);
        P::setCaptureDark(settings, view.enabledAppearances.count(AppearanceMode::dark) > 0);
    }
    if (countdown)
        P::setCountdownSeconds(settings, view.countdownSeconds);
    if (countdownAfterRelaunch)
        P::setCountdownAfterRelaunch(settings, *countdownAfterRelaunch);
    if (!languages.empty())
        P::setLanguages(settings, view.languages);
    if (!canvas.empty()) {
        P::setOutputSize(settings, view.outputSize);
        if (view.outputSize == OutputSize::custom) {
            P::setCustomCanvasWidth(settings, view.customCanvasWidth);
            P::setCustomCanvasHeight(settings, view.customCanvasHeight);
        }
    }
    if (shadow)
        P::setWindowShadow(settings, view.windowShadow);
    if (!background.empty() || !backgroundColor.empty() || !backgroundImage.empty()) {
        P::setBackgroundKind(settings, AppearanceMode::light, view.lightBackground.kind);
        P::setBackgroundKind(settings, AppearanceMode::dark, view.darkBackground.kind);
    }
    if (!backgroundImage.empty()) {
        P::setBackgroundURL(settings, AppearanceMode::light, view.lightBackground.url);
        P::setBackgroundURL(settings, AppearanceMode::dark, view.darkBackground.url);
    }
    if (!saveFolder.empty()) {
        P::setSaveFolderURL(settings, absolutePath(saveFolder));
    }
}

}  // namespace zd::cli
