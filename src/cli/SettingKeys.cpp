#include "SettingKeys.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <filesystem>
#include <limits>

#include "env/SettingsStore.h"
#include "model/AppearanceMode.h"
#include "model/BackgroundKind.h"
#include "model/CaptureScope.h"
#include "model/OutputSize.h"
#include "model/Preferences.h"
#include "model/WindowSizePreset.h"

namespace zd::cli {

namespace {

namespace fs = std::filesystem;
namespace K = Preferences::Keys;

// The case names of the canvas presets, in the order of their raw values.
constexpr std::array<std::string_view, 6> outputSizeCaseNames{"mas2880", "mas2560", "mas1440",
                                                              "mas1280", "current", "custom"};

template <class E>
std::vector<std::string> rawValuesOf() {
    std::vector<std::string> values;
    for (auto value : allCases<E>())
        values.push_back(rawString(value));
    return values;
}

std::string lowercased(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::string inQuotes(const std::string& text) {
    std::string result = "\"";
    for (char c : text) {
        if (c == '"' || c == '\\')
            result += '\\';
        result += c;
    }
    return result + "\"";
}

Value pathValue(const std::optional<std::string>& path) {
    return path ? Value(*path) : Value();
}

}  // namespace

const std::vector<SettingKey>& settingKeys() {
    static const std::vector<SettingKey> keys{
        {K::captureScope, StoredForm::choice, "single window or multiple windows"},
        {K::windowSizePreset, StoredForm::choice, "size given to the window before capture"},
        {K::captureLight, StoredForm::boolean, "capture in Light"},
        {K::captureDark, StoredForm::boolean, "capture in Dark"},
        {K::countdownSeconds, StoredForm::integer, "seconds of countdown before capture"},
        {K::countdownAfterRelaunch, StoredForm::boolean,
         "repeat the countdown after each language switch"},
        {K::languageCodes, StoredForm::textList, "codes of the languages to capture, in order"},
        {K::outputSize, StoredForm::choice, "canvas preset"},
        {K::customCanvasWidth, StoredForm::integer, "width of the custom canvas, in pixels"},
        {K::customCanvasHeight, StoredForm::integer, "height of the custom canvas, in pixels"},
        {K::windowShadow, StoredForm::boolean, "composed window has a drop shadow"},
        {K::lightBackgroundKind, StoredForm::choice, "kind of the Light background"},
        {K::darkBackgroundKind, StoredForm::choice, "kind of the Dark background"},
        {K::lightBackgroundURL, StoredForm::filePath, "picture of the Light background"},
        {K::darkBackgroundURL, StoredForm::filePath, "picture of the Dark background"},
        {K::menuBarBackground, StoredForm::boolean, "the drawn menu bar paints its own background"},
        {K::saveFolderURL, StoredForm::folderPath, "folder that receives the run folders"},
    };
    return keys;
}

const SettingKey* findSettingKey(std::string_view name) {
    for (const auto& key : settingKeys()) {
        if (key.name == name)
            return &key;
    }
    return nullptr;
}

std::vector<std::string> choicesOf(const SettingKey& key) {
    if (key.name == K::captureScope)
        return rawValuesOf<CaptureScope>();
    if (key.name == K::windowSizePreset)
        return rawValuesOf<WindowSizePreset>();
    if (key.name == K::outputSize)
        return rawValuesOf<OutputSize>();
    if (key.name == K::lightBackgroundKind || key.name == K::darkBackgroundKind) {
        return rawValuesOf<BackgroundKind>();
    }
    return {};
}

std::string expectedForm(const SettingKey& key) {
    switch (key.form) {
        case StoredForm::choice: {
            std::string text = "one of";
            auto choices = choicesOf(key);
            for (std::size_t i = 0; i < choices.size(); ++i) {
                text += (i == 0 ? " " : ", ") + inQuotes(choices[i]);
                if (key.name == K::outputSize)
                    text += " (" + std::string(outputSizeCaseNames[i]) + ")";
            }
            return text;
        }
        case StoredForm::boolean:
            return "true or false";
        case StoredForm::integer:
            return "a whole number";
        case StoredForm::textList:
            return "language codes such as de fr pt-BR, or none for the target's current "
                   "language";
        case StoredForm::filePath:
            return "the path of an existing picture file";
        case StoredForm::folderPath:
            return "the path of an existing folder";
    }
    return "";
}

Expected<Value, std::string> parseSettingValue(const SettingKey& key,
                                               const std::vector<std::string>& words) {
    std::string name(key.name);
    if (key.form == StoredForm::textList) {
        ValueArray codes;
        if (words.size() == 1 && words.front() == "none")
            return Value(std::move(codes));
        for (const auto& word : words) {
            if (word.empty())
                return unexpected(std::string("a language code can't be empty"));
            codes.emplace_back(word);
        }
        return Value(std::move(codes));
    }
    if (words.size() != 1) {
        return unexpected(name + " takes one value: " + expectedForm(key));
    }
    const std::string& word = words.front();
    auto mismatch = [&] {
        return unexpected(inQuotes(word) + " is no value for " + name + "; expected " +
                          expectedForm(key));
    };
    switch (key.form) {
        case StoredForm::choice: {
            auto choices = choicesOf(key);
            for (std::size_t i = 0; i < choices.size(); ++i) {
                bool byCaseName = key.name == K::outputSize && word == outputSizeCaseNames[i];
                if (word == choices[i] || byCaseName)
                    return Value(choices[i]);
            }
            return mismatch();
        }
        case StoredForm::boolean: {
            auto lower = lowercased(word);
            if (lower == "true" || lower == "yes" || lower == "on" || lower == "1")
                return Value(true);
            if (lower == "false" || lower == "no" || lower == "off" || lower == "0")
                return Value(false);
            return mismatch();
        }
        case StoredForm::integer: {
            long long number = 0;
            auto result = std::from_chars(word.data(), word.data() + word.size(), number);
            if (result.ec != std::errc() || result.ptr != word.data() + word.size() ||
                number < std::numeric_limits<int>::min() ||
                number > std::numeric_limits<int>::max()) {
                return mismatch();
            }
            // Stored values stay within what the run's own flag accepts (--countdown).
            if (key.name == K::countdownSeconds && (number < 0 || number > maxCountdownSeconds))
                return unexpected(name + " must be from 0 to " +
                                  std::to_string(maxCountdownSeconds) + " seconds, not " + word);
            return Value(static_cast<std::int64_t>(number));
        }
        case StoredForm::filePath:
        case StoredForm::folderPath: {
            std::error_code error;
            fs::path path = word.empty() ? fs::path() : fs::absolute(word, error);
            bool folder = key.form == StoredForm::folderPath;
            if (word.empty() || error || !fs::exists(path, error)) {
                return unexpected("no such " + std::string(folder ? "folder" : "file") + ": " +
                                  word);
            }
            if (folder != fs::is_directory(path, error)) {
                return unexpected(word +
                                  (folder ? " is no folder" : " is a folder, not a picture file"));
            }
            return Value(path.lexically_normal().string());
        }
        case StoredForm::textList:
            break;
    }
    return mismatch();
}

std::string inlineText(const Value& value) {
    if (auto flag = value.asBool())
        return *flag ? "true" : "false";
    if (auto integer = value.asInteger())
        return std::to_string(*integer);
    if (value.isDouble()) {
        char buffer[32];
        auto end = std::to_chars(buffer, buffer + sizeof buffer, *value.asNumber()).ptr;
        return std::string(buffer, end);
    }
    if (const auto* text = value.asString())
        return inQuotes(*text);
    if (const auto* array = value.asArray()) {
        std::string result = "[";
        for (std::size_t i = 0; i < array->size(); ++i) {
            if (i > 0)
                result += ", ";
            result += inlineText((*array)[i]);
        }
        return result + "]";
    }
    if (const auto* dictionary = value.asDictionary()) {
        std::string result = "{";
        bool first = true;
        for (const auto& [member, inner] : *dictionary) {
            if (!first)
                result += ", ";
            first = false;
            result += inQuotes(member) + ": " + inlineText(inner);
        }
        return result + "}";
    }
    return "null";
}

Value valueInEffect(const SettingsStore& store, const SettingKey& key) {
    auto name = key.name;
    if (name == K::captureScope)
        return rawString(Preferences::captureScope(store));
    if (name == K::windowSizePreset)
        return rawString(Preferences::windowSizePreset(store));
    if (name == K::captureLight || name == K::captureDark) {
        auto mode = name == K::captureLight ? AppearanceMode::light : AppearanceMode::dark;
        return Preferences::enabledAppearances(store).count(mode) > 0;
    }
    if (name == K::countdownSeconds)
        return Preferences::countdownSeconds(store);
    if (name == K::countdownAfterRelaunch)
        return Preferences::countdownAfterRelaunch(store);
    if (name == K::languageCodes) {
        ValueArray codes;
        for (const auto& language : Preferences::languages(store))
            codes.emplace_back(language.code);
        return codes;
    }
    if (name == K::outputSize)
        return rawString(Preferences::outputSize(store));
    if (name == K::customCanvasWidth)
        return Preferences::customCanvasWidth(store);
    if (name == K::customCanvasHeight)
        return Preferences::customCanvasHeight(store);
    if (name == K::windowShadow)
        return Preferences::windowShadow(store);
    if (name == K::lightBackgroundKind) {
        return rawString(Preferences::backgroundKind(store, AppearanceMode::light));
    }
    if (name == K::darkBackgroundKind) {
        return rawString(Preferences::backgroundKind(store, AppearanceMode::dark));
    }
    if (name == K::menuBarBackground)
        return Preferences::menuBarBackground(store);
    return pathValue(Preferences::url(store, name));
}

}  // namespace zd::cli
