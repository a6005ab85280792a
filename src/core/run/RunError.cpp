#include "run/RunError.h"

namespace zd {

namespace {

// Typed failures have no text of their own; the platform then names the type and the case's
// number (cases with a payload are numbered before those without).
std::string generic(const std::string& domain, int code) {
    return "The operation couldn\u2019t be completed. (" + domain + " error " +
           std::to_string(code) + ".)";
}

}  // namespace

std::string localizedDescription(const RunError& error) {
    struct Describe {
        std::string operator()(const CaptureFailure& f) const {
            if (!f.error)
                return f.systemMessage;
            return generic("Zephyrdock.CaptureError", static_cast<int>(*f.error));
        }
        std::string operator()(const LanguageRelauncher::Failure& f) const {
            return generic("Zephyrdock.LanguageRelauncher.Failure", static_cast<int>(f.kind));
        }
        std::string operator()(const AppearanceController::Failure& f) const {
            return generic("Zephyrdock.AppearanceController.Failure", static_cast<int>(f.kind));
        }
        std::string operator()(Cancellation) const { return generic("Swift.CancellationError", 1); }
    };
    return std::visit(Describe{}, error);
}

}  // namespace zd
