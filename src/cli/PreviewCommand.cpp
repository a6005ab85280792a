#include "PreviewCommand.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <fstream>
#include <optional>

#include "CliSupport.h"
#include "ContactSheet.h"
#include "OffscreenGui.h"
#include "QtCanvasFactory.h"
#include "QtImageCodec.h"
#include "RunOverrides.h"
#include "composition/Compositor.h"
#include "common/FileSettingsStore.h"
#include "linux/ResourceBundleLocations.h"
#include "linux/XcbConnection.h"
#include "linux/XcbScreenBackend.h"
#include "model/Preferences.h"
#include "model/ResourceBundle.h"
#include "run/LiveRunServices.h"
#include "run/RunOutput.h"
#include "ui/ContentView.h"

namespace zd::cli {

namespace {

struct PreviewArguments {
    std::string out;
    RunOverrides overrides;
};

int preview(Context& context, const PreviewArguments& args) {
    auto store = openSettings(context);
    if (!store)
        return exitFailure;
    warnAboutSettingsFile(context, *store);
    ensureOffscreenGui();
    ResourceBundle bundle(resourceBundleCandidates());

    // Tiles need drawing and pictures, and the screen when a display answers: its size and
    // scale give a tile the proportions the saved picture will have.
    QtCanvasFactory canvases;
    QtImageCodec images;
    Environment environment;
    environment.canvases = &canvases;
    environment.images = &images;
    std::optional<x11::XcbScreenBackend> screens;
    if (auto display = x11::XcbConnection::open()) {
        screens.emplace(*display);
        environment.screens = &*screens;
    }
    LiveRunServices services(environment);
    ContentView view(environment, services, Preferences::load(*store, bundle));
    if (auto applied = args.overrides.applyTo(view, *context.err); !applied) {
        *context.err << "zephyrdock preview: " << applied.error() << "\n";
        return exitUsage;
    }

    const std::filesystem::path folder(args.out);
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        *context.err << "zephyrdock preview: cannot make " << folder << ": " << error.message()
                     << "\n";
        return exitFailure;
    }
    const Size canvas = previewTileCanvas(view.canvasSize());
    std::vector<SheetPicture> pictures;
    for (const auto& entry : view.planEntries()) {
        // Named as a run names its files: the id made safe for one folder, never over a file
        // that is there already.
        const auto png = images.encodePNG(view.renderTile(entry, nullptr, canvas));
        if (!png || png->empty()) {
            *context.err << "zephyrdock preview: cannot encode the tile " << printable(entry.id)
                         << " (" << canvas.width << "\u00d7" << canvas.height << " pixels)\n";
            return exitFailure;
        }
        auto path = uniquePath(folder, shotFolder({}, entry.id).string(), "png");
        auto written = path ? Compositor::writeEncodedPNG(*png, *path)
                            : Expected<void, OutputError>(unexpected(path.error()));
        if (!written) {
            *context.err << "zephyrdock preview: cannot write "
                         << (path ? path->string() : folder.string()) << ": "
                         << written.error().localizedDescription << "\n";
            return exitFailure;
        }
        const std::string file = path->filename().string();
        std::string label = entry.languageLabel;
        if (!entry.languageCode.empty())
            label += " (" + entry.languageCode + ")";
        label += " \u2014 " + rawString(entry.mode);
        pictures.push_back({file, label});
        *context.out << (folder / file).string() << "\n";
    }
    const auto sheet = uniquePath(folder, "index", "html");
    if (!sheet ||
        !writeContactSheet(folder, "Zephyrdock preview", pictures, sheet->filename().string())) {
        *context.err << "zephyrdock preview: cannot write " << (folder / "index.html") << "\n";
        return exitFailure;
    }
    *context.err << pictures.size() << (pictures.size() == 1 ? " tile" : " tiles") << " and "
                 << sheet->filename().string() << " written to " << folder.string() << "\n";
    return exitSuccess;
}

}  // namespace

void addPreviewCommand(CLI::App& app, Context& context) {
    auto& args = context.makeArguments<PreviewArguments>();
    auto* command = app.add_subcommand(
        "preview", "Draw the preview's placeholder tiles as PNG files, with a contact sheet");
    command->footer(
        "One tile per planned picture, in the order of the run, composed over the real "
        "background and menu bar with an invented window, at most 720 pixels on the long side; "
        "index.html shows them in order with their labels. The options change this preview "
        "only; nothing is stored.");
    command->add_option("--out", args.out, "Folder for the tiles and index.html")->required();
    args.overrides.addOptions(*command, false);
    command->callback([&context, &args] { context.exitCode = preview(context, args); });
}

}  // namespace zd::cli
