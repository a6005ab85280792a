#pragma once
// The main window's settings that outlast a restart, read from and written to a
// `SettingsStore` key by key. No cache: every read goes to the store, every write straight to
// it. Each key has its own fallback for an absent or unreadable value, and these differ on
// purpose (see Preferences.cpp); reading never fails and never writes.

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "model/AppearanceMode.h"
#include "model/BackgroundChoice.h"
#include "model/BackgroundKind.h"
#include "model/CaptureScope.h"
#include "model/LanguageSelection.h"
#include "model/OutputSize.h"
#include "model/WindowSizePreset.h"

namespace zd {

class SettingsStore;
class ResourceBundle;

namespace Preferences {

// The stored keys: an external interface, older settings files must keep loading.
namespace Keys {
inline constexpr std::string_view captureScope = "captureScope";
inline constexpr std::string_view windowSizePreset = "windowSizePreset";
inline constexpr std::string_view captureLight = "captureLight";
inline constexpr std::string_view captureDark = "captureDark";
inline constexpr std::string_view countdownSeconds = "countdownSeconds";
inline constexpr std::string_view countdownAfterRelaunch = "countdownAfterRelaunch";
inline constexpr std::string_view languageCodes = "languageCodes";
inline constexpr std::string_view outputSize = "outputSize";
inline constexpr std::string_view customCanvasWidth = "customCanvasWidth";
inline constexpr std::string_view customCanvasHeight = "customCanvasHeight";
inline constexpr std::string_view windowShadow = "windowShadow";
inline constexpr std::string_view lightBackgroundKind = "lightBackgroundKind";
inline constexpr std::string_view darkBackgroundKind = "darkBackgroundKind";
inline constexpr std::string_view lightBackgroundURL = "lightBackgroundURL";
inline constexpr std::string_view darkBackgroundURL = "darkBackgroundURL";
inline constexpr std::string_view menuBarBackground = "menuBarBackground";
inline constexpr std::string_view saveFolderURL = "saveFolderURL";
}  // namespace Keys

// Read accessors. An absent value, or one of another type, gives the key's fallback.
CaptureScope captureScope(const SettingsStore& store);          // only "all" is allWindows
WindowSizePreset windowSizePreset(const SettingsStore& store);  // half
bool captureLight(const SettingsStore& store);                  // true
bool captureDark(const SettingsStore& store);                   // true
int countdownSeconds(const SettingsStore& store);               // 3
bool countdownAfterRelaunch(const SettingsStore& store);        // false
int customCanvasWidth(const SettingsStore& store);              // 1920
int customCanvasHeight(const SettingsStore& store);             // 1200
bool windowShadow(const SettingsStore& store);                  // true
BackgroundKind lightBackgroundKind(
    const SettingsStore& store);  // color unless "transparent"/"image"
BackgroundKind darkBackgroundKind(const SettingsStore& store);
bool menuBarBackground(const SettingsStore& store);  // true; read only, nothing writes it

// A stored absolute path, if the file or folder it names still exists. A stale entry stays.
std::optional<std::string> url(const SettingsStore& store, std::string_view key);
// Stores the path, or removes the key when there is none.
void setURL(SettingsStore& store, const std::optional<std::string>& path, std::string_view key);

// The selected languages: stored codes in order, labels from the catalog (an unknown code is
// its own label). Anything but a list of texts gives no languages; duplicates stay.
std::vector<LanguageSelection> languages(const SettingsStore& store);
// The canvas preset whose raw value equals the stored text exactly; mas2880 otherwise.
OutputSize outputSize(const SettingsStore& store);
// Light and/or Dark as stored; both if neither is, so the set is never empty.
std::set<AppearanceMode> enabledAppearances(const SettingsStore& store);
// The kind of one appearance's background as the window starts with it: `image` on the first
// run (neither a usable picture path nor a kind stored), else the stored kind.
BackgroundKind backgroundKind(const SettingsStore& store, AppearanceMode mode);
// The background of one appearance as the window starts with it. With neither a usable
// picture path nor a kind stored (the first run) the kind is `image` on the bundle's picture.
// Uses the resource bundle only when no stored picture exists, so that is when a missing
// bundle stops the program.
BackgroundChoice background(const SettingsStore& store, AppearanceMode mode,
                            ResourceBundle& bundle);
// Writers, one for each key that anything writes ("menuBarBackground" has none on purpose):
// each stores the key's stored form, an enumeration as its raw value, numbers as integers.
void setCaptureScope(SettingsStore& store, CaptureScope scope);
void setWindowSizePreset(SettingsStore& store, WindowSizePreset preset);
void setCaptureLight(SettingsStore& store, bool on);
void setCaptureDark(SettingsStore& store, bool on);
void setCountdownSeconds(SettingsStore& store, int seconds);
void setCountdownAfterRelaunch(SettingsStore& store, bool on);
// The codes in order; an empty list is stored as one, the key isn't removed.
void setLanguages(SettingsStore& store, const std::vector<LanguageSelection>& languages);
void setOutputSize(SettingsStore& store, OutputSize size);
void setCustomCanvasWidth(SettingsStore& store, int width);
void setCustomCanvasHeight(SettingsStore& store, int height);
void setWindowShadow(SettingsStore& store, bool on);
void setBackgroundKind(SettingsStore& store, AppearanceMode mode, BackgroundKind kind);
// The picture's path, or the key removed when there is none.
void setBackgroundURL(SettingsStore& store, AppearanceMode mode,
                      const std::optional<std::string>& path);
void setSaveFolderURL(SettingsStore& store, const std::optional<std::string>& path);

// The fill colours every start gives; they aren't stored.
Color defaultFillColor(AppearanceMode mode);

// Everything the main window starts from, read once, in the order of its fields. The defaults
// are what an empty store gives (but for the backgrounds, which need the resource bundle).
struct LoadedSettings {
    CaptureScope captureScope = CaptureScope::singleWindow;
    WindowSizePreset sizePreset = WindowSizePreset::half;
    std::set<AppearanceMode> enabledAppearances{AppearanceMode::light, AppearanceMode::dark};
    int countdownSeconds = 3;
    bool countdownAfterRelaunch = false;
    std::vector<LanguageSelection> languages;
    OutputSize outputSize = OutputSize::mas2880;
    int customCanvasWidth = 1920;
    int customCanvasHeight = 1200;
    bool windowShadow = true;
    BackgroundChoice lightBackground;
    BackgroundChoice darkBackground;
    bool menuBarHasBackground = true;  // the menu bar's other fields start at their defaults

    friend bool operator==(const LoadedSettings&, const LoadedSettings&) = default;
};
LoadedSettings load(const SettingsStore& store, ResourceBundle& bundle);

}  // namespace Preferences
}  // namespace zd
