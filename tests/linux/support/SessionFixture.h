#pragma once
// Shared helpers for integration tests: one private headless desktop per test suite, and
// applications started inside it that end (by their own pid) when the helper goes away.
//
//   class MyTest : public zd::testing::SessionTest {};   // a session for the whole suite
//   TEST_F(MyTest, X) { auto app = launchApp({"gedit", "--new-window"}); ... }

#include <gtest/gtest.h>
#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "linux/HeadlessSession.h"

namespace zd::testing {

// A process started inside the session; SIGTERM then SIGKILL to its pid when destroyed.
class AppProcess {
  public:
    AppProcess(pid_t pid) : pid_(pid) {}  // NOLINT(google-explicit-constructor)
    AppProcess(const AppProcess&) = delete;
    AppProcess& operator=(const AppProcess&) = delete;
    ~AppProcess();
    pid_t pid() const { return pid_; }
    bool running() const;

  private:
    pid_t pid_;
};

// Starts `argv` with the session's environment (stdout and stderr into the session folder).
std::unique_ptr<AppProcess> launchInSession(const x11::HeadlessSession& session,
                                            const std::vector<std::string>& argv);

// Polls `ready` every 50 ms until it holds or `limit` passed.
bool waitFor(const std::function<bool()>& ready,
             std::chrono::milliseconds limit = std::chrono::seconds(20));

// The whole file, or nothing when it can't be read.
std::string readFile(const std::filesystem::path& path);

// A GoogleTest fixture that starts one session for its suite and applies it to this process.
class SessionTest : public ::testing::Test {
  public:
    static void SetUpTestSuite() { startSession({}); }
    static void TearDownTestSuite();
    // For a suite that needs another screen size: call from its own SetUpTestSuite.
    static void startSession(x11::HeadlessSession::Options options);

  protected:
    void SetUp() override;
    static x11::HeadlessSession& session() { return *session_; }
    static bool sessionStarted() { return session_ != nullptr; }
    static std::unique_ptr<AppProcess> launchApp(const std::vector<std::string>& argv) {
        return launchInSession(*session_, argv);
    }

  private:
    static std::unique_ptr<x11::HeadlessSession> session_;
    static std::string failure_;
};

}  // namespace zd::testing
