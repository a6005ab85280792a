#include "capture/FullDisplayCapture.h"

#include <gtest/gtest.h>

#include "CaptureTestSupport.h"

namespace zd::testing {
namespace {

using CaptureEngine::CaptureOutcome;
using CaptureEngine::CaptureRecords;
using CaptureEngine::FullDisplayLayout;

ShareableWindow window(std::uint32_t id, std::string app, std::optional<std::string> title,
                       Rect frame, std::int32_t pid = 10, int layer = 0) {
    return ShareableWindow{id, frame, ShareableApplication{pid, std::move(app)}, std::move(title),
                           layer};
}

Image opaque(int w, int h) {
    return Image(w, h, std::vector<std::uint32_t>(static_cast<std::size_t>(w * h), 0xff336699));
}

std::vector<std::uint32_t> idsOf(const FullDisplayLayout& layout) {
    std::vector<std::uint32_t> ids;
    for (const auto& w : layout.windows)
        ids.push_back(w.windowID);
    return ids;
}

TEST(WindowNames, LabelsAndApplicationNamesFallBackInOrder) {
    ShareableWindow bare{1, {}, std::nullopt, std::nullopt, 0};
    EXPECT_EQ(CaptureEngine::applicationName(bare), "window");
    EXPECT_EQ(CaptureEngine::label(bare), "window");
    ShareableWindow titled{1, {}, std::nullopt, "Notes", 0};
    EXPECT_EQ(CaptureEngine::applicationName(titled), "Notes");
    EXPECT_EQ(CaptureEngine::label(titled), "Notes \u2014 Notes");
    EXPECT_EQ(CaptureEngine::label(window(1, "Pad", "", {})), "Pad");
}

TEST(CaptureFullDisplay, LeavesOutBlankAndFailedWindowsAndTellsWhichInBackToFrontOrder) {
    CaptureFakes fakes;
    FullDisplayLayout layout{{1, 1000, 800}, {}, {}};
    layout.windows = {
        window(1, "Back", "", {0, 0, 100, 100}), window(2, "Pad", "Notes", {10, 10, 100, 100}),
        window(3, "Broken", "", {20, 20, 100, 100}), window(4, "Front", "Doc", {30, 30, 100, 100})};
    for (const auto& w : layout.windows)
        layout.frames[w.windowID] = w.frame;
    fakes.capture.pictures[1] = opaque(200, 200);
    fakes.capture.pictures[2] = Image(200, 200);  // fully transparent
    fakes.capture.failures[3] = CaptureFailure::system("gone");
    fakes.capture.pictures[4] = opaque(200, 200);

    CaptureRecords records;
    records.lastEnabledSnapshot = {{1, "kept"}};
    auto image = runToEnd(CaptureEngine::captureFullDisplay(fakes.env(), layout, records));
    ASSERT_TRUE(image);
    EXPECT_EQ(std::pair(image->width(), image->height()), std::pair(2000, 1600));
    EXPECT_EQ(records.lastSkippedWindowNames, (std::vector<std::string>{"Pad", "Broken"}));
    EXPECT_EQ(records.lastCaptureOutcomes,
              (std::vector<CaptureOutcome>{{"Back", {0, 0, 100, 100}, true, false},
                                           {"Pad \u2014 Notes", {10, 10, 100, 100}, false, true},
                                           {"Broken", {20, 20, 100, 100}, false, false},
                                           {"Front \u2014 Doc", {30, 30, 100, 100}, true, false}}));
    EXPECT_EQ(records.lastEnabledSnapshot.size(), 1u) << "the layout's records aren't touched";

    const auto& canvas = *fakes.canvases.records().back();
    auto draws = canvas.callsOf(CanvasCall::Kind::drawImage);
    ASSERT_EQ(draws.size(), 2u);
    EXPECT_EQ(draws[0].imageId, fakes.capture.pictures[1].storageId()) << "back window first";
    EXPECT_EQ(draws[1].imageId, fakes.capture.pictures[4].storageId());
}

TEST(CaptureFullDisplay, PaintsEachWindowAtItsFrameTurnedUpsideDownWithItsOwnShadow) {
    CaptureFakes fakes;
    FullDisplayLayout layout{{1, 1200, 1000}, {}, {}};
    // The window moved after the layout was built: the layout's frame counts.
    layout.windows = {window(1, "A", "", {500, 500, 10, 10}),
                      window(2, "B", "", {0, 0, 1200, 1000})};
    layout.frames = {{1, {40, 100, 300, 200}}, {2, {0, 0, 1200, 1000}}};
    fakes.capture.pictures[1] = opaque(600, 400);
    fakes.capture.pictures[2] = opaque(2400, 2000);
    CaptureRecords records;
    runToEnd(CaptureEngine::captureFullDisplay(fakes.env(), layout, records));

    ASSERT_EQ(fakes.capture.captures.size(), 2u);
    const auto& config = fakes.capture.captures[0].configuration;
    EXPECT_EQ(std::pair(config.width, config.height), std::pair(600, 400));
    EXPECT_EQ(config.backgroundColor, Color::clear());
    EXPECT_TRUE(config.ignoresShadowsSingleWindow);

    const auto& canvas = *fakes.canvases.records().back();
    auto draws = canvas.callsOf(CanvasCall::Kind::drawImage);
    ASSERT_EQ(draws.size(), 2u);
    EXPECT_EQ(draws[0].rect, (Rect{80, 1400, 600, 400}));
    EXPECT_EQ(draws[1].rect, (Rect{0, 0, 2400, 2000}));
    for (const auto& draw : draws) {
        EXPECT_EQ(draw.op, CompositeOp::sourceOver);
        EXPECT_EQ(draw.shadow, (Shadow{{0, -16}, 56, Color::black(0.4)}));
    }
    // The shadow ends with its window: every draw sits in a save/restore pair of its own.
    EXPECT_EQ(canvas.callsOf(CanvasCall::Kind::save).size(), 2u);
    EXPECT_EQ(canvas.callsOf(CanvasCall::Kind::restore).size(), 2u);
}

TEST(CaptureFullDisplay, AnEmptyLayoutGivesATransparentCanvasAndEmptyRecords) {
    CaptureFakes fakes;
    CaptureRecords records;
    records.lastSkippedWindowNames = {"old"};
    records.lastCaptureOutcomes = {{"old", {}, true, false}};
    auto image = runToEnd(
        CaptureEngine::captureFullDisplay(fakes.env(), FullDisplayLayout{{1, 300, 200}}, records));
    ASSERT_TRUE(image);
    EXPECT_EQ(std::pair(image->width(), image->height()), std::pair(600, 400));
    EXPECT_TRUE(records.lastSkippedWindowNames.empty());
    EXPECT_TRUE(records.lastCaptureOutcomes.empty());
}

TEST(SnapshotLayout, KeepsOtherApplicationsWindowsInTheWindowServersOrderBackToFront) {
    CaptureFakes fakes;
    fakes.processes.ownPid = 99;
    fakes.capture.content.displays = {{1, 1440, 900}, {2, 800, 600}};
    fakes.capture.content.windows = {window(1, "A", "", {0, 0, 10, 10}),
                                     window(2, "Self", "", {}, 99),
                                     window(3, "Menu", "", {}, 10, 24),
                                     window(4, "Status", "", {}, 10, 25),
                                     window(5, "Below", "", {}, 10, -1),
                                     window(6, "B", "", {1, 2, 3, 4}, 10, 3),
                                     ShareableWindow{7, {}, std::nullopt, "orphan", 0},
                                     window(8, "NotListed", "", {})};
    fakes.windowList.setWindows(
        ValueArray{windowRecord(6, 10, "B", "", {}), windowRecord(2, 99, "Self", "", {}),
                   windowRecord(7, 10, "x", "", {}), windowRecord(1, 10, "A", "", {})});
    CaptureRecords records;
    auto layout = runToEnd(CaptureEngine::snapshotFullDisplayLayout(fakes.env()));
    ASSERT_TRUE(layout);
    EXPECT_EQ(layout->display.displayID, 1u);
    EXPECT_EQ(idsOf(*layout), (std::vector<std::uint32_t>{1, 6}));
    EXPECT_EQ(layout->frames.at(6), (Rect{1, 2, 3, 4}));
    EXPECT_EQ(fakes.windowList.requests.back(), WindowListOption::excludeDesktopElements);

    fakes.capture.content.displays.clear();
    auto noDisplay =
        runToEnd(CaptureEngine::captureFullDisplay(fakes.env(), std::nullopt, records));
    EXPECT_TRUE(!noDisplay && noDisplay.error().is(CaptureError::noDisplay));
    fakes.capture.contentFailure = "denied";
    auto denied = runToEnd(CaptureEngine::snapshotFullDisplayLayout(fakes.env()));
    EXPECT_TRUE(!denied && denied.error().is(CaptureError::permissionDenied));
    Environment noCapture = fakes.env();  // a platform that can't capture at all
    noCapture.capture = nullptr;
    auto none = runToEnd(CaptureEngine::snapshotFullDisplayLayout(noCapture));
    EXPECT_TRUE(!none && none.error().is(CaptureError::permissionDenied));
}

TEST(LayoutFromRows, FindsTickedRowsByIdOrByNamesWithoutTakingAWindowTwice) {
    ShareableContent content;
    content.displays = {{1, 1440, 900}};
    content.windows = {window(20, "Pad", "", {0, 0, 1, 1}), window(21, "Pad", "", {0, 0, 2, 2}),
                       window(5, "Viewer", "Photo", {3, 3, 3, 3}),
                       ShareableWindow{30, {}, std::nullopt, std::nullopt, 0}};
    std::vector<CompositeEntry> rows{{5, "Viewer", "Photo", true},
                                     {1, "Pad", "", true},  // both Pad ids changed
                                     {9, "Off", "", false},
                                     {2, "Pad", "", true},
                                     {3, "Gone", "Doc", true}};
    CaptureRecords records;
    auto layout = CaptureEngine::layoutFromRows(content, rows, records);
    ASSERT_TRUE(layout);
    EXPECT_EQ(idsOf(*layout), (std::vector<std::uint32_t>{21, 20, 5})) << "back to front";
    EXPECT_EQ(layout->frames.at(21), (Rect{0, 0, 2, 2}));
    EXPECT_EQ(records.lastEnabledSnapshot,
              (std::vector<CaptureEngine::EnabledRow>{
                  {5, "Viewer \u2014 Photo"}, {1, "Pad"}, {2, "Pad"}, {3, "Gone \u2014 Doc"}}));
    EXPECT_EQ(records.lastMissingFromLayout, (std::vector<std::string>{"Gone \u2014 Doc"}));

    content.displays.clear();
    auto failed = CaptureEngine::layoutFromRows(content, {}, records);
    EXPECT_TRUE(!failed && failed.error().is(CaptureError::noDisplay));
    EXPECT_EQ(records.lastMissingFromLayout.size(), 1u) << "earlier records stand";
}

TEST(LayoutFromRows, AFailedQueryIsPassedOnAsTheSystemsError) {
    CaptureFakes fakes;
    fakes.capture.contentFailure = "the system said no";
    CaptureRecords records;
    auto layout =
        runToEnd(CaptureEngine::buildLayoutFromCompositeWindows(fakes.env(), {}, records));
    EXPECT_TRUE(!layout && layout.error() == CaptureFailure::system("the system said no"));
}

}  // namespace
}  // namespace zd::testing
