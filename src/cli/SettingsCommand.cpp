#include "SettingsCommand.h"

#include <CLI/CLI.hpp>

#include <algorithm>

#include "CliSupport.h"
#include "SettingKeys.h"
#include "common/FileSettingsStore.h"
#include "common/JsonValueCodec.h"
#include "common/PlatformEnvironment.h"
#include "linux/ResourceBundleLocations.h"
#include "model/Preferences.h"
#include "model/ResourceBundle.h"

namespace zd::cli {

namespace {

std::string keyList() {
    std::string text;
    for (const auto& key : settingKeys()) {
        text += "  " + padded(std::string(key.name), 24) + std::string(key.summary) + "\n";
    }
    return text;
}

std::string keyForms() {
    std::string text;
    for (const auto& key : settingKeys()) {
        text += "  " + padded(std::string(key.name), 24) + expectedForm(key) + "\n";
    }
    return text;
}

bool reportWriteError(Context& context, const SettingsStore& settings) {
    const auto* file = dynamic_cast<const FileSettingsStore*>(&settings);
    if (!file)
        return false;
    const FileSettingsStore& store = *file;
    if (store.setAside()) {
        *context.err << "zephyrdock settings: " << store.path()
                     << " couldn't be read as settings; it is kept as " << *store.setAside()
                     << "\n";
    }
    if (!store.lastWriteError())
        return false;
    *context.err << "zephyrdock settings: cannot save the settings: " << *store.lastWriteError()
                 << "\n";
    return true;
}

// The value a start takes: as the key alone reads, except for the background pictures, which
// a first start takes from the resource bundle where no picture is stored.
Value inEffect(const SettingsStore& store, const SettingKey& key,
               const Preferences::LoadedSettings& loaded) {
    const std::optional<std::string>* picture = nullptr;
    if (key.name == Preferences::Keys::lightBackgroundURL)
        picture = &loaded.lightBackground.url;
    if (key.name == Preferences::Keys::darkBackgroundURL)
        picture = &loaded.darkBackground.url;
    if (!picture)
        return valueInEffect(store, key);
    return *picture ? Value(**picture) : Value();
}

int show(Context& context, bool json) {
    auto store = openSettings(context);
    if (!store)
        return exitFailure;
    warnAboutSettingsFile(context, *store);
    ResourceBundle bundle(resourceBundleCandidates());
    const auto loaded = Preferences::load(*store, bundle);
    if (json) {
        ValueDictionary keys;
        for (const auto& key : settingKeys()) {
            auto stored = store->objectForKey(std::string(key.name));
            keys[std::string(key.name)] =
                ValueDictionary{{"stored", stored ? *stored : Value()},
                                {"inEffect", inEffect(*store, key, loaded)}};
        }
        ValueDictionary document{{"file", settingsLocation(*store)}, {"keys", std::move(keys)}};
        *context.out << JsonValueCodec::encode(Value(std::move(document)));
        return exitSuccess;
    }
    *context.out << "Settings file: " << settingsLocation(*store) << "\n\n";
    *context.out << padded("KEY", 24) << padded("STORED", 34) << "IN EFFECT\n";
    for (const auto& key : settingKeys()) {
        auto stored = store->objectForKey(std::string(key.name));
        auto effect = inEffect(*store, key, loaded);
        std::string storedText = stored ? inlineText(*stored) : "-";
        std::string effectText = effect.isNull() ? "none" : inlineText(effect);
        *context.out << padded(std::string(key.name), 24) << padded(storedText, 34) << effectText
                     << "\n";
    }
    return exitSuccess;
}

int set(Context& context, const std::string& name, const std::vector<std::string>& words) {
    const auto* key = findSettingKey(name);
    if (!key) {
        *context.err << "zephyrdock settings set: unknown key \"" << name << "\"; the keys are:\n"
                     << keyList();
        return exitUsage;
    }
    auto value = parseSettingValue(*key, words);
    if (!value.hasValue()) {
        *context.err << "zephyrdock settings set: " << value.error() << "\n";
        return exitUsage;
    }
    auto store = openSettings(context);
    if (!store)
        return exitFailure;
    store->setObject(*value, name);
    if (reportWriteError(context, *store))
        return exitFailure;
    *context.out << name << " = " << inlineText(*value) << "\n";
    return exitSuccess;
}

int reset(Context& context, const std::vector<std::string>& names, bool all) {
    if (all == !names.empty()) {
        *context.err << "zephyrdock settings reset: name the keys to reset, or give --all\n";
        return exitUsage;
    }
    for (const auto& name : names) {
        if (!findSettingKey(name)) {
            *context.err << "zephyrdock settings reset: unknown key \"" << name
                         << "\"; the keys are:\n"
                         << keyList();
            return exitUsage;
        }
    }
    auto store = openSettings(context);
    if (!store)
        return exitFailure;
    auto keys = all ? store->allKeys() : names;
    for (const auto& name : keys) {
        store->removeObjectForKey(name);
        if (reportWriteError(context, *store))
            return exitFailure;
    }
    return exitSuccess;
}

struct SettingsArguments {
    bool json = false;
    std::string key;
    std::vector<std::string> words;
    std::vector<std::string> resetKeys;
    bool resetAll = false;
};

}  // namespace

void addSettingsCommand(CLI::App& app, Context& context) {
    auto* settings = app.add_subcommand(
        "settings", "Show, change or reset the stored settings the application starts from");
    settings->footer(
        "Settings are kept in " + PlatformEnvironment::userSettingsPlace() +
        ", or in the JSON file given with --settings-file. A key that is absent, or holds a "
        "value of the wrong type, falls back to its default.\n\nKeys:\n" +
        keyList());
    settings->require_subcommand(0, 1);

    auto& args = context.makeArguments<SettingsArguments>();
    auto* showCommand = settings->add_subcommand(
        "show", "List every key with its stored value and the value the application starts with");
    showCommand->add_flag("--json", args.json, "Print a JSON object instead of a table");
    showCommand->callback([&context, &args] { context.exitCode = show(context, args.json); });

    auto* setCommand = settings->add_subcommand("set", "Store a value under a key");
    setCommand->add_option("key", args.key, "The stored key, e.g. countdownSeconds")->required();
    setCommand->add_option("value", args.words,
                           "The value: true or false, a whole number, one of the key's "
                           "choices, a path, or the language codes of languageCodes");
    setCommand->footer("Values:\n" + keyForms() +
                       "\nExamples:\n  zephyrdock settings set captureScope all\n"
                       "  zephyrdock settings set outputSize mas1440\n"
                       "  zephyrdock settings set languageCodes de fr pt-BR\n"
                       "  zephyrdock settings set saveFolderURL ~/Screenshots");
    setCommand->callback(
        [&context, &args] { context.exitCode = set(context, args.key, args.words); });

    auto* resetCommand = settings->add_subcommand(
        "reset", "Remove stored keys, so that they start from their defaults again");
    resetCommand->add_option("keys", args.resetKeys, "The keys to remove");
    resetCommand->add_flag("--all", args.resetAll, "Remove every stored key");
    resetCommand->callback(
        [&context, &args] { context.exitCode = reset(context, args.resetKeys, args.resetAll); });

    auto* pathCommand = settings->add_subcommand("path", "Print where the settings are kept");
    pathCommand->callback([&context] {
        auto store = openSettings(context);
        if (!store) {
            context.exitCode = exitFailure;
            return;
        }
        *context.out << settingsLocation(*store) << "\n";
    });

    // `zephyrdock settings` alone shows them.
    settings->callback([&context, settings] {
        if (settings->get_subcommands().empty())
            context.exitCode = show(context, false);
    });
}

}  // namespace zd::cli
