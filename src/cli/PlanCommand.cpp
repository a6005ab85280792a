#include "PlanCommand.h"

#include <CLI/CLI.hpp>

#include <cmath>

#include "CliSupport.h"
#include "RunOverrides.h"
#include "env/Environment.h"
#include "common/FileSettingsStore.h"
#include "common/JsonValueCodec.h"
#include "linux/ResourceBundleLocations.h"
#include "model/Preferences.h"
#include "model/ResourceBundle.h"
#include "run/LiveRunServices.h"
#include "ui/ContentView.h"

namespace zd::cli {

namespace {

struct PlanArguments {
    bool json = false;
    RunOverrides overrides;
};

std::string sizeText(Size size) {
    return std::to_string(std::lround(size.width)) + " \u00d7 " +
           std::to_string(std::lround(size.height));
}

int plan(Context& context, const PlanArguments& args) {
    auto store = openSettings(context);
    if (!store)
        return exitFailure;
    warnAboutSettingsFile(context, *store);
    ResourceBundle bundle(resourceBundleCandidates());
    // The plan reads the window's fields only: no backend is reached. The flags change this
    // plan only and are checked as the run checks them; nothing is written.
    Environment environment;
    LiveRunServices services(environment);
    ContentView view(environment, services, Preferences::load(*store, bundle));
    if (auto applied = args.overrides.applyTo(view, *context.err); !applied) {
        *context.err << "zephyrdock plan: " << applied.error() << "\n";
        return exitUsage;
    }
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
        *context.out << "  " << padded(printable(entry.id), 20)
                     << padded(printable(entry.languageLabel), 26) << title(entry.mode) << "\n";
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
        "and of the run. The options are those of preview and change this plan only; nothing is "
        "stored.");
    command->add_flag("--json", args.json, "Print a JSON object instead of a list");
    args.overrides.addOptions(*command, false);
    command->callback([&context, &args] { context.exitCode = plan(context, args); });
}

}  // namespace zd::cli
