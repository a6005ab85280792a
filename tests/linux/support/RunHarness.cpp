#include "RunHarness.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <filesystem>
#include <thread>

#include "SessionFixture.h"
#include "composition/MenuBarOCR.h"
#include "linux/TesseractTextRecognitionBackend.h"
#include "model/Preferences.h"
#include "testing/ManualClock.h"

namespace zd::testing {

using namespace std::chrono_literals;

void ensureGuiApplication() {
    if (QCoreApplication::instance())
        return;
    static int argc = 1;
    static char name[] = "zd_linux_tests";
    static char* argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication app(argc, argv);
}

std::vector<std::string> menuTitlesOn(const Image& bar, const std::string& appName) {
    static x11::TesseractTextRecognitionBackend recognizer;
    ManualClock clock;
    InlineWorkerPool workers;
    Environment env;
    env.clock = &clock;
    env.workers = &workers;
    env.textRecognition = &recognizer;
    std::vector<std::string> titles;
    spawn([](Task<std::vector<std::string>> t, std::vector<std::string>& out) -> Task<void> {
        out = co_await std::move(t);
    }(MenuBarOCR::ocr(env, bar, appName), titles));
    return titles;
}

bool runEventsUntil(const std::function<bool()>& done, std::chrono::seconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!done()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        std::this_thread::sleep_for(5ms);
    }
    return true;
}

std::unique_ptr<RunHarness> RunHarness::create(const std::string& settingsFile,
                                               const std::string& saveFolder) {
    ensureGuiApplication();
    auto platform = PlatformEnvironment::create({settingsFile});
    if (!platform)
        return nullptr;
    std::unique_ptr<RunHarness> harness(new RunHarness());
    harness->platform_ = std::move(*platform);
    Environment& env = harness->env();
    harness->dialogs_ = std::make_unique<FakeDialogBackend>(harness->log_);
    env.dialogs = harness->dialogs_.get();
    std::filesystem::create_directories(saveFolder);
    Preferences::setURL(*env.settings, saveFolder, "saveFolderURL");
    harness->services_ = std::make_unique<LiveRunServices>(env);
    harness->view_ = std::make_unique<ContentView>(
        env, *harness->services_,
        Preferences::load(*env.settings, harness->platform_->resourceBundle()));
    ContentView& view = *harness->view_;
    view.progress.onCancel = [&view] { view.cancelCapture(); };
    return harness;
}

bool RunHarness::selectTargetOf(int pid) {
    return waitFor([&] {
        view().reloadTargets();
        for (const auto& target : view().targets) {
            if (target.pid == pid)
                view().selectedTargetID = target.id;
        }
        return view().selectedTargetID.has_value();
    });
}

bool RunHarness::takeShotsAndWait(std::chrono::seconds limit) {
    view().takeShots();
    return runEventsUntil([&] { return !view().isWorking; }, limit);
}

}  // namespace zd::testing
