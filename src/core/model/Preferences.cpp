#include "model/Preferences.h"

#include <filesystem>
#include <limits>
#include <system_error>

#include "env/SettingsStore.h"
#include "model/ResourceBundle.h"

namespace zd::Preferences {

namespace {

namespace fs = std::filesystem;

std::string keyText(std::string_view key) {
    return std::string(key);
}

// A boolean stored as a boolean, or as the number 0 or 1 (what another tool writes where the
// platform's store would hold a boolean); any other type or number counts as absent.
bool readBool(const SettingsStore& store, std::string_view key, bool fallback) {
    auto value = store.objectForKey(keyText(key));
    if (!value)
        return fallback;
    if (auto number = value->asNumber(); number && (*number == 0 || *number == 1))
        return *number == 1;
    return value->asBool().value_or(fallback);
}

// An integer stored as an integer, or as a floating-point number without a fraction, as the
// platform's number bridging reads it; any other type counts as absent. No range is checked,
// only what doesn't fit an int is held at its limit.
int readInt(const SettingsStore& store, std::string_view key, int fallback) {
    auto value = store.objectForKey(keyText(key));
    if (!value)
        return fallback;
    std::int64_t number = 0;
    if (auto integer = value->asInteger()) {
        number = *integer;
    } else if (value->isDouble()) {
        double real = *value->asNumber();
        if (!(real >= -9.2e18 && real <= 9.2e18) ||
            real != static_cast<double>(static_cast<std::int64_t>(real))) {
            return fallback;
        }
        number = static_cast<std::int64_t>(real);
    } else {
        return fallback;
    }
    if (number > std::numeric_limits<int>::max())
        return std::numeric_limits<int>::max();
    if (number < std::numeric_limits<int>::min())
        return std::numeric_limits<int>::min();
    return static_cast<int>(number);
}

BackgroundKind readBackgroundKind(const SettingsStore& store, std::string_view key) {
    auto text = store.stringForKey(keyText(key));
    if (text == "transparent")
        return BackgroundKind::transparent;
    if (text == "image")
        return BackgroundKind::image;
    return BackgroundKind::color;
}

std::string_view kindKey(AppearanceMode mode) {
    return mode == AppearanceMode::light ? Keys::lightBackgroundKind : Keys::darkBackgroundKind;
}

std::string_view urlKey(AppearanceMode mode) {
    return mode == AppearanceMode::light ? Keys::lightBackgroundURL : Keys::darkBackgroundURL;
}

}  // namespace

CaptureScope captureScope(const SettingsStore& store) {
    return store.stringForKey(keyText(Keys::captureScope)) == "all" ? CaptureScope::allWindows
                                                                    : CaptureScope::singleWindow;
}

WindowSizePreset windowSizePreset(const SettingsStore& store) {
    auto text = store.stringForKey(keyText(Keys::windowSizePreset));
    if (!text)
        return WindowSizePreset::half;
    return fromRawValue<WindowSizePreset>(*text).value_or(WindowSizePreset::half);
}

bool captureLight(const SettingsStore& store) {
    return readBool(store, Keys::captureLight, true);
}
bool captureDark(const SettingsStore& store) {
    return readBool(store, Keys::captureDark, true);
}
int countdownSeconds(const SettingsStore& store) {
    return readInt(store, Keys::countdownSeconds, 3);
}
bool countdownAfterRelaunch(const SettingsStore& store) {
    return readBool(store, Keys::countdownAfterRelaunch, false);
}
int customCanvasWidth(const SettingsStore& store) {
    return readInt(store, Keys::customCanvasWidth, 1920);
}
int customCanvasHeight(const SettingsStore& store) {
    return readInt(store, Keys::customCanvasHeight, 1200);
}
bool windowShadow(const SettingsStore& store) {
    return readBool(store, Keys::windowShadow, true);
}
BackgroundKind lightBackgroundKind(const SettingsStore& store) {
    return readBackgroundKind(store, Keys::lightBackgroundKind);
}
BackgroundKind darkBackgroundKind(const SettingsStore& store) {
    return readBackgroundKind(store, Keys::darkBackgroundKind);
}
bool menuBarBackground(const SettingsStore& store) {
    return readBool(store, Keys::menuBarBackground, true);
}

std::optional<std::string> url(const SettingsStore& store, std::string_view key) {
    auto text = store.stringForKey(keyText(key));
    // An empty text names no file; a relative one is taken from the current folder, as a file
    // URL made from a path would be.
    if (!text || text->empty())
        return std::nullopt;
    std::error_code error;
    fs::path path = fs::absolute(fs::path(*text), error);
    if (error)
        return std::nullopt;
    if (!fs::exists(path, error) || error)
        return std::nullopt;
    return path.string();
}

void setURL(SettingsStore& store, const std::optional<std::string>& path, std::string_view key) {
    if (path) {
        store.setObject(Value(*path), keyText(key));
    } else {
        store.removeObjectForKey(keyText(key));
    }
}

std::vector<LanguageSelection> languages(const SettingsStore& store) {
    std::vector<LanguageSelection> result;
    auto stored = store.arrayForKey(keyText(Keys::languageCodes));
    if (!stored)
        return result;
    for (const auto& element : *stored) {
        // One element of another type spoils the whole list.
        if (!element.isString())
            return {};
    }
    for (const auto& element : *stored)
        result.push_back(LanguageCatalog::selection(*element.asString()));
    return result;
}

OutputSize outputSize(const SettingsStore& store) {
    auto text = store.stringForKey(keyText(Keys::outputSize));
    if (!text)
        return OutputSize::mas2880;
    return fromRawValue<OutputSize>(*text).value_or(OutputSize::mas2880);
}

std::set<AppearanceMode> enabledAppearances(const SettingsStore& store) {
    std::set<AppearanceMode> modes;
    if (captureLight(store))
        modes.insert(AppearanceMode::light);
    if (captureDark(store))
        modes.insert(AppearanceMode::dark);
    // Turning off the last appearance is refused by its control, but a store edited by hand
    // may say so; an empty set would plan no shots at all.
    if (modes.empty())
        modes = {AppearanceMode::light, AppearanceMode::dark};
    return modes;
}

void setCaptureScope(SettingsStore& store, CaptureScope scope) {
    store.setObject(Value(rawString(scope)), keyText(Keys::captureScope));
}
void setWindowSizePreset(SettingsStore& store, WindowSizePreset preset) {
    store.setObject(Value(rawString(preset)), keyText(Keys::windowSizePreset));
}
void setCaptureLight(SettingsStore& store, bool on) {
    store.setBool(on, keyText(Keys::captureLight));
}
void setCaptureDark(SettingsStore& store, bool on) {
    store.setBool(on, keyText(Keys::captureDark));
}
void setCountdownSeconds(SettingsStore& store, int seconds) {
    store.setInteger(seconds, keyText(Keys::countdownSeconds));
}
void setCountdownAfterRelaunch(SettingsStore& store, bool on) {
    store.setBool(on, keyText(Keys::countdownAfterRelaunch));
}
void setLanguages(SettingsStore& store, const std::vector<LanguageSelection>& languages) {
    ValueArray codes;
    for (const auto& language : languages)
        codes.emplace_back(language.code);
    store.setObject(Value(std::move(codes)), keyText(Keys::languageCodes));
}
void setOutputSize(SettingsStore& store, OutputSize size) {
    store.setObject(Value(rawString(size)), keyText(Keys::outputSize));
}
void setCustomCanvasWidth(SettingsStore& store, int width) {
    store.setInteger(width, keyText(Keys::customCanvasWidth));
}
void setCustomCanvasHeight(SettingsStore& store, int height) {
    store.setInteger(height, keyText(Keys::customCanvasHeight));
}
void setWindowShadow(SettingsStore& store, bool on) {
    store.setBool(on, keyText(Keys::windowShadow));
}
void setBackgroundKind(SettingsStore& store, AppearanceMode mode, BackgroundKind kind) {
    store.setObject(Value(rawString(kind)), keyText(kindKey(mode)));
}
void setBackgroundURL(SettingsStore& store, AppearanceMode mode,
                      const std::optional<std::string>& path) {
    setURL(store, path, urlKey(mode));
}
void setSaveFolderURL(SettingsStore& store, const std::optional<std::string>& path) {
    setURL(store, path, Keys::saveFolderURL);
}

Color defaultFillColor(AppearanceMode mode) {
    return mode == AppearanceMode::light ? Color::white(0.95, 1.0) : Color::white(0.06, 1.0);
}

BackgroundKind backgroundKind(const SettingsStore& store, AppearanceMode mode) {
    bool firstRun = !url(store, urlKey(mode)) && !store.objectForKey(keyText(kindKey(mode)));
    return firstRun ? BackgroundKind::image : readBackgroundKind(store, kindKey(mode));
}

BackgroundChoice background(const SettingsStore& store, AppearanceMode mode,
                            ResourceBundle& bundle) {
    BackgroundChoice choice;
    choice.kind = backgroundKind(store, mode);
    auto storedURL = url(store, urlKey(mode));
    if (storedURL) {
        choice.url = storedURL;
    } else {
        choice.url = bundle.url(mode == AppearanceMode::light ? "Light" : "Dark", "jpg");
    }
    choice.fillColor = defaultFillColor(mode);
    return choice;
}

LoadedSettings load(const SettingsStore& store, ResourceBundle& bundle) {
    LoadedSettings loaded;
    loaded.captureScope = captureScope(store);
    loaded.sizePreset = windowSizePreset(store);
    loaded.enabledAppearances = enabledAppearances(store);
    loaded.countdownSeconds = countdownSeconds(store);
    loaded.countdownAfterRelaunch = countdownAfterRelaunch(store);
    loaded.languages = languages(store);
    loaded.outputSize = outputSize(store);
    loaded.customCanvasWidth = customCanvasWidth(store);
    loaded.customCanvasHeight = customCanvasHeight(store);
    loaded.windowShadow = windowShadow(store);
    loaded.lightBackground = background(store, AppearanceMode::light, bundle);
    loaded.darkBackground = background(store, AppearanceMode::dark, bundle);
    loaded.menuBarHasBackground = menuBarBackground(store);
    return loaded;
}

}  // namespace zd::Preferences
