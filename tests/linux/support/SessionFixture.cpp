#include "SessionFixture.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <fstream>
#include <thread>

#include "linux/SpawnArguments.h"

namespace zd::testing {

std::unique_ptr<x11::HeadlessSession> SessionTest::session_;
std::string SessionTest::failure_;

AppProcess::~AppProcess() {
    if (pid_ <= 0)
        return;
    if (kill(pid_, SIGTERM) == 0) {
        bool gone = waitFor([this] { return waitpid(pid_, nullptr, WNOHANG) == pid_; },
                            std::chrono::seconds(3));
        if (!gone) {
            kill(pid_, SIGKILL);
            waitpid(pid_, nullptr, 0);
        }
    } else {
        waitpid(pid_, nullptr, WNOHANG);
    }
}

bool AppProcess::running() const {
    return pid_ > 0 && waitpid(pid_, nullptr, WNOHANG) == 0;
}

std::unique_ptr<AppProcess> launchInSession(const x11::HeadlessSession& session,
                                            const std::vector<std::string>& argv) {
    std::vector<std::string> args = argv;
    std::vector<char*> argp = x11::spawnArray(args);
    auto env = session.childEnvironment();
    std::vector<char*> envp = x11::spawnArray(env);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    std::string log = (session.directory() / (argv.at(0) + ".log")).string();
    posix_spawn_file_actions_addopen(&actions, 1, log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    posix_spawn_file_actions_adddup2(&actions, 1, 2);
    pid_t pid = 0;
    int rc = posix_spawnp(&pid, argp[0], &actions, nullptr, argp.data(), envp.data());
    posix_spawn_file_actions_destroy(&actions);
    if (rc != 0)
        return nullptr;
    return std::make_unique<AppProcess>(pid);
}

bool waitFor(const std::function<bool()>& ready, std::chrono::milliseconds limit) {
    auto deadline = std::chrono::steady_clock::now() + limit;
    while (std::chrono::steady_clock::now() < deadline) {
        if (ready())
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return ready();
}

std::string readFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void SessionTest::startSession(x11::HeadlessSession::Options options) {
    auto started = x11::HeadlessSession::start(options);
    if (!started) {
        failure_ = started.error();
        return;
    }
    session_ = std::move(*started);
    session_->applyToCurrentProcess();
}

void SessionTest::TearDownTestSuite() {
    session_.reset();
    failure_.clear();
}

void SessionTest::SetUp() {
    ASSERT_TRUE(session_) << "The headless session did not start: " << failure_;
}

}  // namespace zd::testing
