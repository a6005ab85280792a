#include "PlanCommand.h"

#include <CLI/CLI.hpp>

#include <cmath>

#include "CliSupport.h"
#include "env/Environment.h"
#include "linux/FileSettingsStore.h"
#include "linux/JsonValueCodec.h"
#include "linux/ResourceBundleLocations.h"
#include "model/Preferences.h"
#include "model/ResourceBundle.h"
#include "run/LiveRunServices.h"
#include "ui/ContentView.h"

namespace zd::cli {

namespace {

struct PlanArguments {
    bool json = false;
    std::string scope;
    std::vector<std::string> languages;
    std::vector<std::string> appearances;
    std::string store;
};

std::string sizeText(Size size) {
    return std::to_string(std::lround(size.width)) + " \u00d7 " +
           std::to_string(std::lround(size.height));
}

int plan(Context& context, const PlanArguments& args) {
    auto store = openSettings(context);
    if (!store)
        return exitFailure;
    ResourceBundle bundle(resourceBundleCandidates());
    auto settings = Preferences::load(*store, bundle);

    // Overrides for this plan only; nothing is written.
    if (!args.scope.empty()) {
        settings.captureScope = *fromRawValue<CaptureScope>(args.scope);
    }
    if (!args.languages.empty()) {
        settings.languages.clear();
        for (const auto& code : args.languages) {
            if (code != "none")
                settings.languages.push_back(LanguageCatalog::selection(code));
        }
    }
    if (!args.appearances.empty()) {
        settings.enabledAppearances.clear();
        for (const auto& mode : args.appearances) {
            settings.enabledAppearances.insert(*fromRawValue<AppearanceMode>(mode));
        }
    }

    // The plan reads the window's fields only: no backend is reached.
    Environment environment;
    LiveRunServices services(environment);
    ContentView view(environment, services, settings);
    if (!args.store.empty())
        view.store = *fromRawValue<Store>(args.store);
    auto entries = view.planEntries();
    int count = view.plannedShotCount();
    auto canvas = view.canvasSize();
    const bool flathub = view.store == Store::flathub;
    bool canvasOfDisplay = !flathub && view.outputSize == OutputSize::current;

    if (args.json) {
        ValueArray list;
        for (const auto& entry : entries) {
            list.emplace_back(ValueDictionary{{"id", entry.id},
                                              {"languageCode", entry.languageCode},
                                              {"languageLabel", entry.languageLabel},
                                              {"mode", rawString(entry.mode)}});
        }
        ValueDictionary canvasValue{{"outputSize", rawString(view.outputSize)}};
        if (!canvasOfDisplay) {
            canvasValue["width"] = static_cast<std::int64_t>(std::lround(canvas.width));
            canvasValue["height"] = static_cast<std::int64_t>(std::lround(canvas.height));
        }
        ValueDictionary document{{"captureScope", rawString(view.captureScope)},
                                 {"plannedShotCount", count},
                                 {"canvas", std::move(canvasValue)},
                                 {"entries", std::move(list)}};
        if (auto warning = view.storeWarning())
            document["storeWarning"] = *warning;
        *context.out << JsonValueCodec::encode(Value(std::move(document)));
        return exitSuccess;
    }

    *context.out << count << (count == 1 ? " shot" : " shots") << " planned ("
                 << tileTitle(view.captureScope) << "), canvas "
                 << (canvasOfDisplay ? "of the main display"
                     : flathub       ? "of the window with its shadow, about " + sizeText(canvas)
                                     : sizeText(canvas))
                 << "\n";
    if (auto warning = view.storeWarning())
        *context.out << *warning << "\n";
    if (entries.empty()) {
        *context.out << "No pictures: no appearance is enabled.\n";
        return exitSuccess;
    }
    for (const auto& entry : entries) {
        *context.out << "  " << padded(entry.id, 20) << padded(entry.languageLabel, 26)
                     << title(entry.mode) << "\n";
    }
    return exitSuccess;
}

}  // namespace

void addPlanCommand(CLI::App& app, Context& context) {
    auto& args = context.makeArguments<PlanArguments>();
    auto* command = app.add_subcommand(
        "plan", "List the pictures a run would produce with the stored settings");
    command->footer(
        "One line per picture, languages outermost, Light before Dark: the order of the preview "
        "and of the run. The options change this plan only; nothing is stored.");
    command->add_flag("--json", args.json, "Print a JSON object instead of a list");
    command->add_option("--scope", args.scope, "Plan for this scope instead of the stored one")
        ->check(CLI::IsMember({"single", "all"}));
    command
        ->add_option("--languages", args.languages,
                     "Plan for these language codes instead of the stored ones; \"none\" for "
                     "the target's current language")
        ->expected(1, -1);
    command
        ->add_option("--appearances", args.appearances,
                     "Plan for these appearances instead of the stored ones")
        ->check(CLI::IsMember({"light", "dark"}))
        ->expected(1, 2);
    command
        ->add_option("--store", args.store,
                     "Plan the pictures for this store (mac-app-store by default)")
        ->check(CLI::IsMember({"mac-app-store", "flathub"}));
    command->callback([&context, &args] { context.exitCode = plan(context, args); });
}

}  // namespace zd::cli
