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

TEST(ProgressPrinter, RedrawsOneLineOnATerminalAndWritesChangedLinesElsewhere) {
    for (bool terminal : {true, false}) {
        CaptureProgressModel model;
        std::ostringstream out;
        bool showing = true;
        {
            ProgressPrinter printer(model, out, terminal, [&] { return showing; });
            model.setShotsTotal(0);  // the run's first writes: the idle line is no news
            model.setCaptureStage("Posing");
            model.setCaptureStage("Posing");  // the same value again: nothing new
            model.setCountdownRemaining(2);
            showing = false;  // the run's resets after its end aren't drawn
            model.setCaptureStage("");
        }
        EXPECT_EQ(out.str(),
                  terminal ? "\r\033[KPosing\r\033[KPosing  [2]\n" : "Posing\nPosing  [2]\n");
    }
}

TEST(ProgressPrinter, CutsTheLineToTheTerminalsWidth) {
    CaptureProgressModel model;
    std::ostringstream out;
    {
        ProgressPrinter printer(
            model, out, true, [] { return true; }, 8);
        model.setCaptureStage("Capturing");     // 9 characters: 6, "…", and a free column
        model.setCaptureStage("Posing\u2026");  // 7 characters fit
    }
    EXPECT_EQ(out.str(), "\r\033[KCaptur\u2026\r\033[KPosing\u2026\n");
}

}  // namespace
}  // namespace zd::cli
