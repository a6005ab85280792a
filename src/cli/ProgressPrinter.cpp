#include "ProgressPrinter.h"

namespace zd::cli {

ProgressPrinter::ProgressPrinter(CaptureProgressModel& model, std::ostream& out, bool isTerminal,
                                 std::function<bool()> showing)
    : model_(model), out_(out), isTerminal_(isTerminal), showing_(std::move(showing)) {
    subscription_ = model_.subscribe([this](CaptureProgressModel::Field) { update(); });
}

ProgressPrinter::~ProgressPrinter() {
    model_.unsubscribe(subscription_);
    finish();
}

std::string ProgressPrinter::lineFor(const CaptureProgressModel& model) {
    std::string line = model.captureStage().empty() ? model.statusMessage() : model.captureStage();
    if (model.countdownRemaining() >= 1)
        line += "  [" + std::to_string(model.countdownRemaining()) + "]";
    if (model.shotsTotal() >= 1) {
        line += "  " + std::to_string(model.shotsCompleted()) + "/" +
                std::to_string(model.shotsTotal());
    }
    return line;
}

void ProgressPrinter::update() {
    if (!showing_())
        return;
    const std::string line = lineFor(model_);
    if (line == shown_)
        return;  // the model announces writes of the value it holds too
    shown_ = line;
    if (isTerminal_) {
        out_ << "\r\033[K" << line << std::flush;
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
