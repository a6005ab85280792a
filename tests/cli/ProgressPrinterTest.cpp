// The progress panel on a terminal: what the line holds, and how it is drawn on a terminal
// and into a file.
#include "ProgressPrinter.h"

#include <gtest/gtest.h>

#include <sstream>

namespace zd::cli {
namespace {

struct LineCase {
    std::string stage;
    int countdown;
    int completed;
    int total;
    std::string expected;
};

TEST(ProgressPrinter, LineHoldsHeadlineCountdownAndCount) {
    const std::vector<LineCase> cases{
        {"", 0, 0, 0, "Idle."},                   // no stage: the status; no count
        {"Posing", 1, 0, 4, "Posing  [1]  0/4"},  // 1 second still shows
        {"Capturing German\u2026", 0, 5, 4, "Capturing German\u2026  5/4"},
    };
    for (const auto& c : cases) {
        CaptureProgressModel model;
        model.setStatusMessage("Idle.");
        model.setCaptureStage(c.stage);
        model.setCountdownRemaining(c.countdown);
        model.setShotsCompleted(c.completed);
        model.setShotsTotal(c.total);
        EXPECT_EQ(ProgressPrinter::lineFor(model), c.expected);
    }
}

TEST(ProgressPrinter, RedrawsOneLineCutToTheTerminalsWidthAndWritesChangedLinesElsewhere) {
    // "Déjà vu" is 7 characters in 9 bytes: it fits 8 columns (6, "…" and a free one); with its
    // countdown it is cut.
    const struct {
        bool terminal;
        std::size_t columns;
        const char* expected;
    } cases[] = {
        {true, 0, "\r\033[KD\u00e9j\u00e0 vu\r\033[KD\u00e9j\u00e0 vu  [2]\n"},
        {false, 8, "D\u00e9j\u00e0 vu\nD\u00e9j\u00e0 vu  [2]\n"},
        {true, 8, "\r\033[KD\u00e9j\u00e0 vu\r\033[KD\u00e9j\u00e0 v\u2026\n"},
    };
    for (const auto& c : cases) {
        CaptureProgressModel model;
        std::ostringstream out;
        bool showing = true;
        {
            ProgressPrinter printer(
                model, out, c.terminal, [&] { return showing; }, c.columns);
            model.setShotsTotal(0);  // the run's first writes: the idle line is no news
            model.setCaptureStage("D\u00e9j\u00e0 vu");
            model.setCaptureStage("D\u00e9j\u00e0 vu");  // the same value again: nothing new
            model.setCountdownRemaining(2);
            showing = false;  // the run's resets after its end aren't drawn
            model.setCaptureStage("");
        }
        EXPECT_EQ(out.str(), c.expected) << c.terminal << " " << c.columns;
    }
}

}  // namespace
}  // namespace zd::cli
