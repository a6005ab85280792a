#include "ProgressPrinter.h"

#include <vector>

#include "CliSupport.h"
#include "ui/ProgressPanelRules.h"

namespace zd::cli {

namespace {

// The line cut to fewer characters than the terminal has columns (counting characters, not
// the bytes of "…" or "—").
std::string fitted(const std::string& line, std::size_t columns) {
    if (columns < 2)
        return line;
    std::vector<std::size_t> starts;  // where each character begins
    for (std::size_t i = 0; i < line.size(); ++i) {
        if ((static_cast<unsigned char>(line[i]) & 0xC0) != 0x80)
            starts.push_back(i);
    }
    if (starts.size() <= columns - 1)
        return line;
    return line.substr(0, starts[columns - 2]) + "\u2026";
}

}  // namespace

ProgressPrinter::ProgressPrinter(CaptureProgressModel& model, std::ostream& out, bool isTerminal,
                                 std::function<bool()> showing, std::size_t columns)
    : model_(model),
      out_(out),
      isTerminal_(isTerminal),
      showing_(std::move(showing)),
      columns_(columns) {
    idleStatus_ = model_.statusMessage();
    subscription_ = model_.subscribe([this](CaptureProgressModel::Field) { update(); });
}

ProgressPrinter::~ProgressPrinter() {
    subscription_.reset();
    finish();
}

std::string ProgressPrinter::lineFor(const CaptureProgressModel& model) {
    std::string line = ProgressPanelRules::headline(model);
    if (model.countdownRemaining() >= 1)
        line += "  [" + std::to_string(model.countdownRemaining()) + "]";
    if (model.shotsTotal() >= 1) {
        line += "  " + std::to_string(model.shotsCompleted()) + "/" +
                std::to_string(model.shotsTotal());
    }
    return line;
}

void ProgressPrinter::update() {
    if (!showing_() || (stopping_ && model_.countdownRemaining() >= 1))
        return;
    // The window's idle line ("Pick a window, …") is no news while the run starts up.
    if (model_.captureStage().empty() && model_.statusMessage() == idleStatus_)
        return;
    const std::string line = printable(lineFor(model_));
    if (line == shown_)
        return;  // the model announces writes of the value it holds too
    shown_ = line;
    if (isTerminal_) {
        out_ << "\r\033[K" << fitted(line, columns_) << std::flush;
        lineOpen_ = true;
    } else {
        out_ << line << std::endl;
    }
}

void ProgressPrinter::finish() {
    if (lineOpen_)
        out_ << "\n" << std::flush;
    lineOpen_ = false;
}

}  // namespace zd::cli
