#include "CheckCommand.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "CliSupport.h"
#include "PngInspector.h"
#include "store/StoreRules.h"

namespace zd::cli {

namespace {

namespace fs = std::filesystem;

struct CheckArguments {
    std::string folder;
    std::string store = "mac-app-store";
};

bool isPng(const fs::path& path) {
    std::string ext = path.extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return ext == ".png";
}

StoreRules::PictureFacts factsOf(const fs::path& root, const fs::path& file) {
    StoreRules::PictureFacts facts;
    facts.path = file.lexically_relative(root).generic_string();
    // The pictures of one language share their folder: the language folder, or the run
    // folder itself ("") for a run without languages.
    facts.group = file.parent_path().lexically_relative(root).generic_string();
    if (facts.group == ".")
        facts.group.clear();
    std::ifstream in(file, std::ios::binary);
    const std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(in)),
                                          std::istreambuf_iterator<char>());
    facts.fileBytes = bytes.size();
    if (!in.good() && !in.eof()) {
        facts.unreadable = "can't be read";
        return facts;
    }
    const auto png = PngInspector::inspect(bytes);
    if (!png) {
        facts.unreadable = png.error();
        return facts;
    }
    facts.width = png->width;
    facts.height = png->height;
    facts.bitDepth = png->bitDepth;
    facts.colourType = png->colourType;
    facts.interlaced = png->interlaced;
    facts.alphaChannel = png->alphaChannel;
    facts.transparentPixels = png->transparentPixels;
    facts.opaqueBounds = {png->opaqueWidth, png->opaqueHeight};
    return facts;
}

int check(Context& context, const CheckArguments& args) {
    const Store store = *fromRawValue<Store>(args.store);
    const fs::path root(args.folder);
    std::error_code error;
    if (!fs::is_directory(root, error)) {
        *context.err << "zephyrdock check: " << args.folder << " is not a folder\n";
        return exitFailure;
    }
    std::vector<fs::path> files;
    for (auto it = fs::recursive_directory_iterator(root, error);
         !error && it != fs::recursive_directory_iterator(); it.increment(error)) {
        if (it->is_regular_file(error) && isPng(it->path()))
            files.push_back(it->path());
    }
    if (error) {
        *context.err << "zephyrdock check: cannot read " << args.folder << ": " << error.message()
                     << "\n";
        return exitFailure;
    }
    std::sort(files.begin(), files.end());
    if (files.empty()) {
        *context.err << "zephyrdock check: no PNG files under " << args.folder << "\n";
        return exitFailure;
    }

    std::vector<StoreRules::PictureFacts> pictures;
    pictures.reserve(files.size());
    for (const auto& file : files)
        pictures.push_back(factsOf(root, file));
    const auto report = StoreRules::check(store, pictures);

    std::size_t refused = 0;
    for (const auto& file : report.files) {
        *context.out << file.path << ": ";
        if (file.problems.empty()) {
            *context.out << "ok\n";
            continue;
        }
        ++refused;
        for (std::size_t i = 0; i < file.problems.size(); ++i)
            *context.out << (i > 0 ? "; " : "") << file.problems[i];
        *context.out << "\n";
    }
    for (const auto& problem : report.groupProblems)
        *context.out << problem << "\n";
    const std::string storeName = store == Store::macAppStore ? "the " + std::string(title(store))
                                                              : std::string(title(store));
    if (report.passed()) {
        *context.out << "All " << files.size() << " pictures pass for " << storeName << ".\n";
        return exitSuccess;
    }
    *context.out << refused << " of " << files.size() << " pictures would be refused by "
                 << storeName
                 << (report.groupProblems.empty() ? "" : ", and one language has too many")
                 << ".\n";
    return exitFailure;
}

}  // namespace

void addCheckCommand(CLI::App& app, Context& context) {
    auto& args = context.makeArguments<CheckArguments>();
    auto* command = app.add_subcommand(
        "check", "Check the PNG files under a run folder against a store's rules before upload");
    command->footer(
        "Reads every PNG under the folder and names, per file, what the store would refuse: "
        "for the Mac App Store an alpha channel or transparency, a size other than 1280 \u00d7 "
        "800, 1440 \u00d7 900, 2560 \u00d7 1600 or 2880 \u00d7 1800, colours other than 8-bit "
        "RGB, interlacing, more than ten pictures for one language, an oversized file; for "
        "Flathub a window beyond 1000 \u00d7 700 logical pixels or without transparency around "
        "it. Exit status: 0 when every picture passes, 1 otherwise.");
    command->add_option("folder", args.folder, "The run folder (or any folder of pictures)")
        ->required();
    command->add_option("--store", args.store, "The store to check for (mac-app-store by default)")
        ->check(CLI::IsMember({"mac-app-store", "flathub"}));
    command->callback([&context, &args] { context.exitCode = check(context, args); });
}

}  // namespace zd::cli
