// `zephyrdock check`: a run folder's pictures against a store's rules, with planted bad files.
#include <gtest/gtest.h>

#include <QImage>

#include <fstream>

#include "CliRunner.h"
#include "PngWriter.h"

namespace zd {
namespace {

void writePng(const std::filesystem::path& path, const Image& image) {
    std::filesystem::create_directories(path.parent_path());
    const auto bytes = *PngWriter::encode(image);
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

Image opaque(int width, int height) {
    Image image(width, height);
    for (auto& p : image.mutablePixels())
        p = 0xff2060a0u;
    return image;
}

TEST(CheckCommand, PassesAFreshRunAndNamesEveryPlantedProblem) {
    test::CliRunner cli;
    const auto run = cli.home.path() / "Shots/gedit \u2014 2026-03-09-141502";
    for (const char* name : {"de/light.png", "de/dark.png", "ja/light.png", "ja/dark.png"})
        writePng(run / name, opaque(1280, 800));
    auto result = cli.run({"check", run.string()});
    EXPECT_EQ(result.exitCode, 0) << result.out << result.err;
    EXPECT_NE(result.out.find("All 4 pictures pass for the Mac App Store."), std::string::npos);

    // An RGBA copy (as other tools write it), a 1000 × 1000 copy, eleven pictures for ja.
    QImage rgba(1280, 800, QImage::Format_ARGB32);
    rgba.fill(QColor(32, 96, 160));
    rgba.save(QString::fromStdString((run / "de/rgba.png").string()));
    writePng(run / "de/square.png", opaque(1000, 1000));
    for (int n = 2; n <= 10; ++n)
        writePng(run / ("ja/light (" + std::to_string(n) + ").png"), opaque(1280, 800));
    result = cli.run({"check", run.string(), "--store", "mac-app-store"});
    EXPECT_EQ(result.exitCode, 1);
    for (const char* line :
         {"de/rgba.png: alpha channel",
          "de/square.png: 1000 \u00d7 1000 isn't one of the store's sizes",
          "ja: 11 pictures, more than the 10 the store takes for one language",
          "2 of 15 pictures would be refused by the Mac App Store, and one language has too many."})
        EXPECT_NE(result.out.find(line), std::string::npos) << line << "\n" << result.out;
}

}  // namespace
}  // namespace zd
