#include "QtImageCodec.h"

#include <gtest/gtest.h>

#include <libdeflate.h>

#include <QBuffer>
#include <QImage>
#include <QTemporaryDir>

#include <filesystem>
#include <fstream>

#include "GuiApp.h"
#include "ImageConversion.h"

namespace zd {
namespace {

void putBigEndian32(std::uint8_t* p, std::uint32_t v) {
    for (int i = 0; i < 4; ++i)
        p[i] = static_cast<std::uint8_t>(v >> (24 - 8 * i));
}

class QtImageCodecTest : public ::testing::Test {
  protected:
    void SetUp() override { testing::ensureGuiApp(); }

    std::string write(const std::string& name, const std::vector<std::uint8_t>& bytes) {
        const std::string path = dir_.filePath(QString::fromStdString(name)).toStdString();
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        return path;
    }
    std::vector<std::uint8_t> smallPng() {
        Image image(40, 30);
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < 40; ++x)
                image.setPixel(x, y, Image::argb(128, 64, static_cast<std::uint32_t>(x), 0));
        image.setPixel(0, 0, Image::argb(10, 5, 0, 10));  // little alpha: premultiplied kept
        image.setPixel(1, 0, 0);
        return *codec_.encodePNG(image);
    }
    std::vector<std::uint8_t> jpeg(int w, int h) {
        QImage image(w, h, QImage::Format_RGB32);
        // Busy content, so that the compressed scan is most of the file.
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x)
                image.setPixel(x, y, qRgb(x * 7 % 256, y * 13 % 256, (x ^ y) % 256));
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "JPEG", 90);
        return {bytes.begin(), bytes.end()};
    }

    QTemporaryDir dir_;
    QtImageCodec codec_;
};

TEST_F(QtImageCodecTest, WritesAndReadsPngAndReadsJpegAsPremultipliedArgb) {
    const auto png = codec_.load(write("a.png", smallPng()));
    ASSERT_TRUE(png.has_value());
    EXPECT_EQ(png->width(), 40);
    EXPECT_EQ(png->height(), 30);
    EXPECT_EQ(png->pixel(39, 29), Image::argb(128, 64, 39, 0));
    EXPECT_EQ(png->pixel(0, 0), Image::argb(10, 5, 0, 10));
    EXPECT_EQ(png->pixel(1, 0), 0u);
    for (const Image& empty : {Image(), Image(0, 5)})
        EXPECT_FALSE(codec_.encodePNG(empty).has_value());

    const auto jpg = codec_.load(write("b.jpg", jpeg(640, 480)));
    ASSERT_TRUE(jpg.has_value());
    EXPECT_EQ(jpg->width(), 640);
    EXPECT_EQ(Image::alphaOf(jpg->pixel(10, 10)), 255u);

    // Data after the end marker (some cameras append a video) doesn't make a photo unreadable.
    auto appended = jpeg(64, 48);
    appended.insert(appended.end(), 3000, 0x5a);
    EXPECT_TRUE(codec_.load(write("appended.jpg", appended)).has_value());
}

TEST_F(QtImageCodecTest, BadFilesGiveNothing) {
    const auto png = smallPng();
    const auto jpg = jpeg(256, 256);

    // A PNG whose header claims 100000 × 100000 pixels: a few bytes that would need 40 GB.
    auto bomb = png;
    putBigEndian32(bomb.data() + 16, 100000);
    putBigEndian32(bomb.data() + 20, 100000);
    putBigEndian32(bomb.data() + 29, libdeflate_crc32(0, bomb.data() + 12, 17));

    std::vector<std::uint8_t> noise(5000);
    for (std::size_t i = 0; i < noise.size(); ++i)
        noise[i] = static_cast<std::uint8_t>(i * 7919);
    auto corruptPng = png;
    for (std::size_t i = 40; i < corruptPng.size() - 12; ++i)
        corruptPng[i] ^= 0x5a;

    const std::vector<std::pair<std::string, std::vector<std::uint8_t>>> cases = {
        {"bomb.png", bomb},
        {"noise.png", noise},
        {"empty.jpg", {}},
        {"truncated.png", {png.begin(), png.begin() + static_cast<long>(png.size() / 2)}},
        {"signature-only.png", {png.begin(), png.begin() + 8}},
        {"corrupt.png", corruptPng},
        {"truncated-header.jpg", {jpg.begin(), jpg.begin() + 300}},
        {"truncated-scan.jpg", {jpg.begin(), jpg.begin() + static_cast<long>(jpg.size() * 2 / 3)}},
    };
    for (const auto& [name, bytes] : cases)
        EXPECT_FALSE(codec_.load(write(name, bytes)).has_value()) << name;
    EXPECT_FALSE(codec_.load(dir_.filePath("missing.png").toStdString()).has_value());
    EXPECT_FALSE(codec_.load(dir_.path().toStdString()).has_value()) << "a folder";
}

TEST_F(QtImageCodecTest, ReadsAChangedFileAnewAndKeepsTheSameOneInMemory) {
    const std::string path = write("bg.jpg", jpeg(32, 16));
    const auto first = codec_.load(path);
    const auto again = codec_.load(path);
    ASSERT_TRUE(first && again);
    EXPECT_EQ(first->storageId(), again->storageId()) << "the same picture, not decoded twice";

    write("bg.jpg", jpeg(48, 16));  // replaced: another size on disk
    const auto changed = codec_.load(path);
    ASSERT_TRUE(changed.has_value());
    EXPECT_EQ(changed->width(), 48);

    std::filesystem::remove(path);
    EXPECT_FALSE(codec_.load(path).has_value()) << "a file that's gone isn't served from memory";
}

}  // namespace
}  // namespace zd
