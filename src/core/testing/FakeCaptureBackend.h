#pragma once
// Scripted shareable content and window pictures. Every capture is recorded with its
// configuration; a window without a scripted picture fails with a system error.

#include <map>
#include <string>
#include <vector>

#include "env/CaptureBackend.h"

namespace zd::testing {

class FakeCaptureBackend : public CaptureBackend {
  public:
    struct Call {
        std::uint32_t windowID = 0;
        WindowCaptureConfiguration configuration;
    };

    Expected<ShareableContent, std::string> shareableContent() override {
        if (contentFailure)
            return unexpected(*contentFailure);
        return content;
    }
    Expected<Image, CaptureFailure> captureWindow(
        const ShareableWindow& window, const WindowCaptureConfiguration& configuration) override {
        captures.push_back(Call{window.windowID, configuration});
        if (auto it = failures.find(window.windowID); it != failures.end()) {
            return unexpected(it->second);
        }
        if (auto it = pictures.find(window.windowID); it != pictures.end())
            return it->second;
        return unexpected(CaptureFailure::system("no picture scripted"));
    }

    ShareableContent content;
    std::optional<std::string> contentFailure;
    std::map<std::uint32_t, Image> pictures;
    std::map<std::uint32_t, CaptureFailure> failures;
    std::vector<Call> captures;
};

}  // namespace zd::testing
