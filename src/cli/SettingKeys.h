#pragma once
// The stored keys as the `settings` subcommand shows and takes them: each key's stored form,
// the values it accepts, how a stored value is shown, and what the window would start with.
// The keys and their stored texts are those the application reads and writes.

#include <string>
#include <string_view>
#include <vector>

#include "model/Expected.h"
#include "model/Value.h"

namespace zd {

class SettingsStore;

namespace cli {

// The longest countdown the run's flag and the stored setting take, in seconds.
inline constexpr int maxCountdownSeconds = 3600;

enum class StoredForm { choice, boolean, integer, textList, filePath, folderPath };

struct SettingKey {
    std::string_view name;
    StoredForm form;
    std::string_view summary;  // one line for the listing and the help
};

// Every key, in the order of the window's fields.
const std::vector<SettingKey>& settingKeys();
const SettingKey* findSettingKey(std::string_view name);

// The texts a choice key stores, in the order of its cases.
std::vector<std::string> choicesOf(const SettingKey& key);
// What "set" expects, e.g. "true or false" or one of the choices.
std::string expectedForm(const SettingKey& key);

// The value to store for the words given after the key, or why they don't fit. A choice may
// also be named by its case ("mas1440" for "1440 × 900"); a path is made absolute and must
// exist; "none", or no word at all, is the empty list of languages.
Expected<Value, std::string> parseSettingValue(const SettingKey& key,
                                               const std::vector<std::string>& words);

// A stored value on one line: texts quoted, lists in brackets.
std::string inlineText(const Value& value);
// What the window starts with for this key, after the key's own fallback.
Value valueInEffect(const SettingsStore& store, const SettingKey& key);

}  // namespace cli
}  // namespace zd
