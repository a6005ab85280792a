#pragma once
// Scripted dialogs: the folder and the picture the choosers answer with; every call is written to
// the log.

#include <optional>
#include <string>
#include <vector>

#include "env/DialogBackend.h"
#include "testing/EventLog.h"

namespace zd::testing {

class FakeDialogBackend : public DialogBackend {
  public:
    explicit FakeDialogBackend(EventLog& log) : log_(log) {}

    std::optional<std::string> chooseFolder(const std::string& message) override {
        log_.add("chooseFolder " + message);
        return chosenFolder;
    }
    std::optional<std::string> chooseImageFile(
        const std::vector<std::string>& extensions) override {
        std::string listed;
        for (const auto& extension : extensions)
            listed += " " + extension;
        log_.add("chooseImageFile" + listed);
        return chosenImage;
    }
    void showAlert(const std::string& messageText, const std::string& informativeText,
                   AlertStyle style, const std::vector<std::string>& buttons) override {
        log_.add("alert " + messageText);
        alerts.push_back({messageText, informativeText, style, buttons});
    }
    void revealFolder(const std::string& path) override { log_.add("revealFolder " + path); }
    void activateThisProgram() override { log_.add("activateThisProgram"); }

    struct Alert {
        std::string messageText;
        std::string informativeText;
        AlertStyle style;
        std::vector<std::string> buttons;
    };
    std::optional<std::string> chosenFolder;
    std::optional<std::string> chosenImage;
    std::vector<Alert> alerts;

  private:
    EventLog& log_;
};

}  // namespace zd::testing
