#include "SessionReport.h"

#include "CliSupport.h"
#include "ui/ProgressPanelRules.h"

namespace zd::cli {

std::string SessionReport::line(std::string_view kind, const std::vector<std::string>& fields) {
    std::string text(kind);
    for (const auto& field : fields)
        text += "\t" + printable(field);
    return text;
}

std::optional<SessionReport::Line> SessionReport::parse(std::string_view text) {
    if (text.empty())
        return std::nullopt;
    Line parsed;
    std::size_t start = 0;
    for (std::size_t tab = text.find('\t');; tab = text.find('\t', start)) {
        const std::string_view field = text.substr(start, tab - start);
        if (start == 0)
            parsed.kind = field;
        else
            parsed.fields.emplace_back(field);
        if (tab == std::string_view::npos)
            break;
        start = tab + 1;
    }
    return parsed;
}

SessionReporter::SessionReporter(CaptureProgressModel& model, std::ostream& out,
                                 std::function<bool()> showing)
    : model_(model), out_(out), showing_(std::move(showing)), idleStatus_(model.statusMessage()) {
    subscription_ = model_.subscribe([this](CaptureProgressModel::Field) { update(); });
}

void SessionReporter::update() {
    if (!showing_())
        return;  // the clean-up's resets are no progress
    // The window's idle line ("Pick a window, …") is no news while the run starts up.
    if (model_.captureStage().empty() && model_.statusMessage() == idleStatus_)
        return;
    const std::string text = SessionReport::line(
        "progress",
        {std::to_string(model_.shotsCompleted()), std::to_string(model_.shotsTotal()),
         std::to_string(model_.countdownRemaining()), ProgressPanelRules::headline(model_)});
    if (text == shown_)
        return;
    shown_ = text;
    out_ << text << std::endl;
}

}  // namespace zd::cli
