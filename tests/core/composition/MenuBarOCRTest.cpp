#include "composition/MenuBarOCR.h"

#include <gtest/gtest.h>

#include "testing/FakeCaptureBackend.h"
#include "testing/FakeTextRecognitionBackend.h"
#include "testing/ManualClock.h"
#include "testing/RecordingCanvas.h"

namespace zd {
namespace {

using MenuBarOCR::Item;
using Strings = std::vector<std::string>;

TextObservation observation(std::string text, double x) {
    return {{{std::move(text), 0.9f}}, Rect{x, 0.2, 0.05, 0.6}};
}

TEST(MenuBarOCR, TitlesAreLeftOfTheLineSortedTrimmedAndWithoutTheAppName) {
    const std::vector<Item> items{
        {"View", 0.30},   {" Edit\n", 0.2}, {"12:41", 0.9},     {"Right", 0.55},
        {"Kept", 0.5499}, {"   ", 0.25},    {"TextEdit", 0.02}, {"textedit Help", 0.4},
        {"File", 0.2},    {"Format", 0.35},
    };
    // Equal x keeps the recogniser's order: Edit before File.
    EXPECT_EQ(MenuBarOCR::titlesFrom(items, " TextEdit "),
              (Strings{"Edit", "File", "View", "Format", "Kept"}));
    EXPECT_EQ(MenuBarOCR::titlesFrom(items, "").size(), 7u);
}

TEST(MenuBarOCR, AppNameIsMatchedWithoutRegardToCaseBeyondAscii) {
    const std::vector<Item> items{
        {"ÜBERSICHT Ablage", 0.1}, {"Bearbeiten", 0.2}, {"ファイル", 0.3}};
    EXPECT_EQ(MenuBarOCR::titlesFrom(items, "Übersicht"), (Strings{"Bearbeiten", "ファイル"}));
    EXPECT_EQ(MenuBarOCR::titlesFrom({{"ЀЏΫ Файл", 0.1}, {"Правка", 0.2}}, "ѐџϋ"),
              Strings{"Правка"});
    EXPECT_EQ(MenuBarOCR::titlesFrom(items, "ファイル"),
              (Strings{"ÜBERSICHT Ablage", "Bearbeiten"}));
}

TEST(MenuBarOCR, ObservationsWithoutCandidatesAreSkipped) {
    std::vector<TextObservation> observations{observation("File", 0.1), {{}, Rect{0.2, 0, 0.1, 1}}};
    EXPECT_EQ(MenuBarOCR::itemsFrom(observations), (std::vector<Item>{{"File", 0.1}}));
    EXPECT_TRUE(MenuBarOCR::itemsFrom({{{}, Rect{}}}).empty());
}

Task<void> keepTitles(Task<Strings> task, Strings& out) {
    out = co_await std::move(task);
}

TEST(MenuBarOCR, OcrAsksForTheAccurateRecogniserWithoutCorrectionAndNeverFails) {
    testing::ManualClock clock;
    testing::InlineWorkerPool workers;
    testing::FakeTextRecognitionBackend recognizer;
    Environment env{.clock = &clock, .workers = &workers, .textRecognition = &recognizer};
    recognizer.result =
        std::vector<TextObservation>{observation("Datei", 0.1), observation("Safari", 0.02)};
    Strings titles{"stale"};
    spawn(keepTitles(MenuBarOCR::ocr(env, Image(4, 4), "Safari"), titles));
    EXPECT_EQ(titles, Strings{"Datei"});
    ASSERT_EQ(recognizer.optionsSeen.size(), 1u);
    EXPECT_TRUE(recognizer.optionsSeen[0].accurate);
    EXPECT_FALSE(recognizer.optionsSeen[0].usesLanguageCorrection);

    recognizer.result = std::nullopt;
    spawn(keepTitles(MenuBarOCR::ocr(env, Image(4, 4), "Safari"), titles));
    EXPECT_TRUE(titles.empty());
}

TEST(MenuBarOCR, StatusItemsFractionIsClampedAndDefaultsToOne) {
    const Rect bar{100, 0, 1000, 24};
    EXPECT_EQ(MenuBarOCR::statusItemsLeftFraction(bar, {}), 1.0);
    EXPECT_EQ(MenuBarOCR::statusItemsLeftFraction({10, 0, 0, 24}, {{5, 0, 10, 24}}), 1.0);
    EXPECT_DOUBLE_EQ(MenuBarOCR::statusItemsLeftFraction(bar, {{900, 0, 30, 24}, {800, 0, 30, 24}}),
                     0.7);
    EXPECT_EQ(MenuBarOCR::statusItemsLeftFraction(bar, {{50, 0, 100, 24}}), 0.0);
    EXPECT_EQ(MenuBarOCR::statusItemsLeftFraction(bar, {{1200, 0, 10, 24}}), 1.0);
}

struct MenuBarCaptureTest : ::testing::Test {
    testing::ManualClock clock;
    testing::InlineWorkerPool workers;
    testing::FakeCaptureBackend capture;
    RecordingCanvasFactory canvases;
    std::optional<MenuBarOCR::MenuBarCapture> result;

    static ShareableWindow window(std::uint32_t id, int layer, Rect frame) {
        return {.windowID = id, .frame = frame, .windowLayer = layer};
    }
    void run() {
        Environment env{
            .clock = &clock, .workers = &workers, .capture = &capture, .canvases = &canvases};
        spawn([](Environment e, std::optional<MenuBarOCR::MenuBarCapture>& out) -> Task<void> {
            out = co_await MenuBarOCR::captureMenuBarImage(e);
        }(env, result));
    }
};

TEST_F(MenuBarCaptureTest, NoMenuBarWindowGivesNothing) {
    capture.content.windows = {window(1, 0, {0, 0, 800, 600}), window(2, 25, {700, 0, 20, 24})};
    run();
    EXPECT_FALSE(result);
    EXPECT_TRUE(capture.captures.empty());
}

TEST_F(MenuBarCaptureTest, BarAndStatusItemsAreDrawnAtTwiceTheirSizeBottomUp) {
    capture.content.windows = {
        window(1, 0, {0, 0, 800, 600}),    window(10, 24, {0, 0, 1000, 24}),
        window(11, 25, {900, 0, 40, 22}),  window(12, 25, {700, 2, 30, 20}),
        window(13, 25, {1200, 0, 40, 24}),  // another display's bar
    };
    capture.pictures[10] = Image(2000, 48);
    capture.pictures[11] = Image(80, 44);
    capture.failures[12] = CaptureFailure::system("gone");
    run();
    ASSERT_TRUE(result);
    // The failed window still counts for the fraction.
    EXPECT_DOUBLE_EQ(result->statusItemsLeftFraction, 0.7);
    ASSERT_EQ(capture.captures.size(), 3u);
    EXPECT_EQ(std::pair(capture.captures[0].configuration.width,
                        capture.captures[0].configuration.height),
              std::pair(2000, 48));
    EXPECT_FALSE(capture.captures[0].configuration.showsCursor);
    EXPECT_EQ(capture.captures[2].windowID, 12u);

    ASSERT_EQ(canvases.records().size(), 1u);
    const auto& record = *canvases.records()[0];
    EXPECT_EQ(std::pair(record.width, record.height), std::pair(2000, 48));
    const auto draws = record.callsOf(CanvasCall::Kind::drawImage);
    ASSERT_EQ(draws.size(), 2u);
    EXPECT_EQ(draws[0].op, CompositeOp::copy);
    EXPECT_EQ(draws[0].rect, (Rect{0, 0, 2000, 48}));
    EXPECT_EQ(draws[1].op, CompositeOp::sourceOver);
    EXPECT_EQ(draws[1].rect, (Rect{1800, 4, 80, 44}));
}

TEST_F(MenuBarCaptureTest, FailedBarCaptureGivesNothing) {
    capture.content.windows = {window(10, 24, {0, 0, 1000, 24})};
    run();
    EXPECT_FALSE(result);
}

}  // namespace
}  // namespace zd
