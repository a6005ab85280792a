#include "LiveView.h"

#include "model/Preferences.h"

namespace zd::cli {

Expected<std::unique_ptr<LiveView>, std::string> LiveView::open(
    const DisplaySession::Options& options, std::ostream& err) {
    auto display = DisplaySession::open(options, err);
    if (!display)
        return unexpected(display.error());
    return std::unique_ptr<LiveView>(new LiveView(std::move(*display)));
}

LiveView::LiveView(std::unique_ptr<DisplaySession> display)
    : display_(std::move(display)),
      services_(display_->environment()),
      view_(display_->environment(), services_,
            Preferences::load(*display_->environment().settings, display_->resourceBundle())) {}

}  // namespace zd::cli
