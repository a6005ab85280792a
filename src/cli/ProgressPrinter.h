#pragma once
// The progress panel on a terminal: the headline (the stage, else the status), the countdown
// and the count of shots, as one line that is redrawn in place on a terminal and as plain
// lines, one per change, when the output goes to a file or a pipe.

#include <functional>
#include <ostream>
#include <string>

#include "ui/CaptureProgressModel.h"

namespace zd::cli {

class ProgressPrinter {
  public:
    // Draws while `showing` holds: the run's own resets after it ended aren't progress.
    // `columns`, on a terminal, is its width: a longer line would wrap and could no longer be
    // redrawn in place, so it is cut with "…". 0 cuts nothing.
    ProgressPrinter(CaptureProgressModel& model, std::ostream& out, bool isTerminal,
                    std::function<bool()> showing, std::size_t columns = 0);
    ~ProgressPrinter();
    ProgressPrinter(const ProgressPrinter&) = delete;
    ProgressPrinter& operator=(const ProgressPrinter&) = delete;

    // The line for the model as it is now.
    static std::string lineFor(const CaptureProgressModel& model);
    // The last line drawn.
    const std::string& shown() const { return shown_; }
    // Ends the line being redrawn, so what follows starts on a line of its own.
    void finish();
    // The run was asked to stop: a countdown now races down at once, and its numbers are
    // not drawn one by one.
    void stopping() { stopping_ = true; }

  private:
    void update();

    CaptureProgressModel& model_;
    std::ostream& out_;
    bool isTerminal_;
    std::function<bool()> showing_;
    std::size_t columns_;
    Subscription subscription_;
    std::string shown_;
    std::string idleStatus_;  // the status before the run, not shown again
    bool lineOpen_ = false;
    bool stopping_ = false;
};

}  // namespace zd::cli
