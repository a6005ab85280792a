#pragma once
// The appearance and the language override as a run changes them, with the journal kept on
// the way: the mode before the first switch is noted before that switch and dropped once the
// mode is back; an application's override is noted before its keys are written and dropped
// once they are deleted again. The run itself is unaware of it.

#include "control/LanguageRelauncher.h"
#include "env/AppearanceBackend.h"
#include "env/LanguageOverrideBackend.h"
#include "run/RunJournal.h"

namespace zd {

class JournaledAppearanceBackend : public AppearanceBackend {
  public:
    JournaledAppearanceBackend(AppearanceBackend& inner, RunJournal& journal)
        : inner_(inner), journal_(journal) {}

    std::optional<ToolResult> readDarkMode() override { return inner_.readDarkMode(); }
    std::optional<ToolResult> writeDarkMode(bool dark) override;

  private:
    AppearanceBackend& inner_;
    RunJournal& journal_;
};

class JournaledLanguageOverrideBackend : public LanguageOverrideBackend {
  public:
    JournaledLanguageOverrideBackend(LanguageOverrideBackend& inner, RunJournal& journal)
        : inner_(inner), journal_(journal) {}

    std::optional<ToolResult> runDefaults(const std::vector<std::string>& arguments) override;
    std::vector<std::string> preferredLanguages() const override {
        return inner_.preferredLanguages();
    }
    LanguageLaunchSettings launchSettings(const std::string& languageCode) const override {
        return inner_.launchSettings(languageCode);
    }

  private:
    LanguageOverrideBackend& inner_;
    RunJournal& journal_;
};

}  // namespace zd
