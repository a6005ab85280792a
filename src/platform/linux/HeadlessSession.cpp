#include "HeadlessSession.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>
#include <thread>

#include "SpawnArguments.h"
#include "ToolRunner.h"

extern char** environ;

namespace zd::x11 {

namespace {

using Clock = std::chrono::steady_clock;
constexpr auto kStartLimit = std::chrono::seconds(15);
constexpr auto kStopLimit = std::chrono::seconds(3);
constexpr auto kPoll = std::chrono::milliseconds(20);
// Xvfb writes its display number to this descriptor in the child.
constexpr int kDisplayFd = 100;

struct FdCloser {
    int fd = -1;
    ~FdCloser() {
        if (fd >= 0)
            close(fd);
    }
};

// Reads from `fd` until `lines` newlines arrived, the writer closed it, or the limit passed.
std::string readLines(int fd, int lines, Clock::time_point deadline) {
    std::string text;
    std::array<char, 256> buffer{};
    while (Clock::now() < deadline) {
        pollfd p{fd, POLLIN, 0};
        auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        if (poll(&p, 1, static_cast<int>(std::max<long>(left.count(), 1))) <= 0)
            continue;
        auto n = read(fd, buffer.data(), buffer.size());
        if (n <= 0)
            break;
        text.append(buffer.data(), static_cast<std::size_t>(n));
        if (std::count(text.begin(), text.end(), '\n') >= lines)
            break;
    }
    return text;
}

std::string trimmed(std::string s) {
    while (!s.empty() && (s.back() == '\n' || s.back() == ' ' || s.back() == '\r'))
        s.pop_back();
    return s;
}

bool displayAnswers(const std::string& display) {
    xcb_connection_t* c = xcb_connect(display.c_str(), nullptr);
    bool ok = c && !xcb_connection_has_error(c);
    if (c)
        xcb_disconnect(c);
    return ok;
}

bool windowManagerRuns(const std::string& display) {
    xcb_connection_t* c = xcb_connect(display.c_str(), nullptr);
    bool running = false;
    if (c && !xcb_connection_has_error(c)) {
        constexpr std::string_view name = "_NET_SUPPORTING_WM_CHECK";
        std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> atom(
            xcb_intern_atom_reply(c, xcb_intern_atom(c, 0, name.size(), name.data()), nullptr),
            &std::free);
        xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
        if (atom) {
            std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> prop(
                xcb_get_property_reply(
                    c, xcb_get_property(c, 0, root, atom->atom, XCB_ATOM_WINDOW, 0, 1), nullptr),
                &std::free);
            running = prop && xcb_get_property_value_length(prop.get()) >= 4;
        }
    }
    if (c)
        xcb_disconnect(c);
    return running;
}

template <class Predicate>
bool waitUntil(Predicate ready, Clock::duration limit) {
    auto deadline = Clock::now() + limit;
    while (Clock::now() < deadline) {
        if (ready())
            return true;
        std::this_thread::sleep_for(kPoll);
    }
    return ready();
}

// The program's path as PATH finds it; the name itself when it isn't found.
std::string inPath(const std::string& name) {
    if (name.find('/') != std::string::npos)
        return name;
    const char* path = std::getenv("PATH");
    std::string_view folders = path ? path : "/usr/bin:/bin";
    while (!folders.empty()) {
        const auto colon = folders.find(':');
        const std::string folder(folders.substr(0, colon));
        folders = colon == std::string_view::npos ? std::string_view() : folders.substr(colon + 1);
        std::string candidate = (folder.empty() ? "." : folder) + "/" + name;
        if (access(candidate.c_str(), X_OK) == 0)
            return candidate;
    }
    return name;
}

// Starts one helper of the session: standard input from /dev/null, standard output and error
// into `log`, `descriptors` (from, to) put in place, nothing else of ours inherited. It joins
// `group` (0: makes a group of its own) and gets SIGTERM when the thread that started it
// ends, so a session whose owner dies, even by SIGKILL, doesn't outlive it. fork and exec by
// hand, since posix_spawn can't ask for the parent-death signal; between the two the child
// only makes async-signal-safe calls on what was prepared before.
pid_t startHelper(const std::vector<std::string>& argv, const std::vector<std::string>& env,
                  const std::string& log, const std::vector<std::pair<int, int>>& descriptors,
                  pid_t group) {
    std::vector<std::string> args = argv;
    std::vector<std::string> variables = env;
    const std::string program = inPath(args.front());
    if (program.find('/') == std::string::npos) {
        errno = ENOENT;  // as a spawn would say: nothing of that name on the PATH
        return -1;
    }
    std::vector<char*> argPointers = spawnArray(args);
    std::vector<char*> envPointers = spawnArray(variables);
    const pid_t parent = getpid();
    const pid_t pid = fork();
    if (pid != 0) {
        if (pid > 0)
            setpgid(pid, group);  // also here, so the group is set before either side goes on
        return pid;
    }
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parent)
        _exit(127);  // the owner is already gone
    setpgid(0, group);
    const int in = open("/dev/null", O_RDONLY);
    const int out = open(log.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (in < 0 || out < 0)
        _exit(127);
    dup2(in, STDIN_FILENO);
    dup2(out, STDOUT_FILENO);
    dup2(out, STDERR_FILENO);
    for (const auto& [from, to] : descriptors) {
        if (from == to)
            fcntl(to, F_SETFD, 0);
        else
            dup2(from, to);  // dup2 clears close-on-exec on the copy
    }
    int keep = STDERR_FILENO;
    for (const auto& [from, to] : descriptors)
        keep = std::max(keep, to);
    for (int fd = STDERR_FILENO + 1; fd <= keep; ++fd) {
        if (std::none_of(descriptors.begin(), descriptors.end(),
                         [fd](const auto& d) { return d.second == fd; })) {
            close(fd);
        }
    }
    close_range(static_cast<unsigned>(keep) + 1, ~0U, 0);
    execve(program.c_str(), argPointers.data(), envPointers.data());
    _exit(127);
}

bool isGone(pid_t pid) {
    return waitpid(pid, nullptr, WNOHANG) == pid;
}

}  // namespace

Expected<std::unique_ptr<HeadlessSession>, std::string> HeadlessSession::start(Options options) {
    std::unique_ptr<HeadlessSession> session(new HeadlessSession());
    if (auto failure = session->launch(options))
        return unexpected(*failure);
    return session;
}

std::optional<std::string> HeadlessSession::launch(Options options) {
    std::string pattern = (std::filesystem::temp_directory_path() / "zd-session.XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        return "Couldn't make the session folder: " + pattern;
    dir_ = pattern;
    for (const char* sub : {"config", "data", "cache", "state", "runtime"}) {
        std::filesystem::create_directories(dir_ / sub);
    }
    std::filesystem::permissions(dir_ / "runtime", std::filesystem::perms::owner_all);

    if (auto failure = startDisplay(options))
        return failure;
    const int scale = std::max(options.scale, 1);
    setResources(scale);
    env_ = {{"DISPLAY", display_},
            {"XDG_CONFIG_HOME", (dir_ / "config").string()},
            {"XDG_DATA_HOME", (dir_ / "data").string()},
            {"XDG_CACHE_HOME", (dir_ / "cache").string()},
            {"XDG_STATE_HOME", (dir_ / "state").string()},
            {"XDG_RUNTIME_DIR", (dir_ / "runtime").string()},
            {"GSETTINGS_BACKEND", "dconf"},
            {"GDK_BACKEND", "x11"},
            // Qt 6 applications take their palette from qt6ct's config, which follows the
            // appearance live; Qt's GTK theme reads the GTK theme only at start.
            {"QT_QPA_PLATFORMTHEME", "qt6ct"},
            // GTK 3 and 4 draw at GDK_SCALE. Qt takes its dpi from XSETTINGS' Xft/DPI, which
            // stays unscaled for GTK's sake (below), so it is given the scale itself.
            {"GDK_SCALE", std::to_string(scale)},
            {"QT_ENABLE_HIGHDPI_SCALING", "1"},
            {"QT_SCALE_FACTOR", std::to_string(scale)}};
    if (auto failure = writeQtConfig())
        return failure;
    if (options.sessionBus) {
        if (auto failure = startBus())
            return failure;
        env_.emplace_back("DBUS_SESSION_BUS_ADDRESS", busAddress_);
        // The accessibility bus, where applications publish their menus; without it their menus
        // are not read, and GTK would start one itself on first use, beyond the session's reach.
        (void)spawn({"/usr/libexec/at-spi-bus-launcher", "--launch-immediately"}, "at-spi.log");
    }
    if (options.settingsDaemon) {
        std::FILE* f = std::fopen(settingsConfig().c_str(), "w");
        if (!f)
            return "Couldn't write " + settingsConfig().string();
        std::fputs("Net/ThemeName \"Adwaita\"\nNet/IconThemeName \"Adwaita\"\n", f);
        // The window scale, and the font dpi (in 1024ths) unscaled: with GDK_SCALE set, GTK
        // takes Xft/DPI as it stands and would otherwise draw text twice too large.
        std::fprintf(f, "Gdk/WindowScalingFactor %d\nGdk/UnscaledDPI %d\nXft/DPI %d\n", scale,
                     96 * 1024, 96 * 1024);
        std::fclose(f);
        xsettingsd_ = spawn({"xsettingsd", "-c", settingsConfig().string()}, "xsettingsd.log");
        if (xsettingsd_ <= 0)
            return std::string("Couldn't start xsettingsd");
        // The appearance backend rewrites this file and signals the daemon to switch GTK3.
        env_.emplace_back("ZD_XSETTINGSD_CONFIG", settingsConfig().string());
        env_.emplace_back("ZD_XSETTINGSD_PID", std::to_string(xsettingsd_));
    }
    if (options.windowManager) {
        if (spawn({"openbox", "--sm-disable"}, "openbox.log") <= 0) {
            return std::string("Couldn't start openbox");
        }
        if (!waitUntil([&] { return windowManagerRuns(display_); }, kStartLimit)) {
            return "openbox did not take display " + display_;
        }
    }
    return std::nullopt;
}

std::optional<std::string> HeadlessSession::startDisplay(const Options& options) {
    std::array<int, 2> fds{};
    if (pipe2(fds.data(), O_CLOEXEC) != 0)
        return std::string("Couldn't make a pipe for Xvfb");
    FdCloser readEnd{fds[0]};
    FdCloser writeEnd{fds[1]};
    const int scale = std::max(options.scale, 1);
    std::string screen = std::to_string(options.width * scale) + "x" +
                         std::to_string(options.height * scale) + "x24";

    std::vector<std::string> argv = {"Xvfb",       "-displayfd", std::to_string(kDisplayFd),
                                     "-screen",    "0",          screen,
                                     "-nolisten",  "tcp",        "-noreset",
                                     "+extension", "Composite"};
    std::string log = (dir_ / "xvfb.log").string();
    std::vector<std::string> env = environmentWith({});
    const pid_t pid = startHelper(argv, env, log, {{fds[1], kDisplayFd}}, 0);
    if (pid < 0)
        return "Couldn't start Xvfb: " + std::string(std::strerror(errno));
    group_ = pid;  // the display server leads the session's process group
    children_.push_back(pid);
    xvfb_ = pid;
    close(writeEnd.fd);
    writeEnd.fd = -1;

    std::string number = trimmed(readLines(readEnd.fd, 1, Clock::now() + kStartLimit));
    if (number.empty())
        return "Xvfb did not start (see " + log + ")";
    display_ = ":" + number;
    if (!waitUntil([&] { return displayAnswers(display_); }, kStartLimit)) {
        return "Display " + display_ + " does not answer";
    }
    return std::nullopt;
}

std::optional<std::string> HeadlessSession::startBus() {
    std::array<int, 2> fds{};
    if (pipe2(fds.data(), O_CLOEXEC) != 0)
        return std::string("Couldn't make a pipe for D-Bus");
    FdCloser readEnd{fds[0]};
    FdCloser writeEnd{fds[1]};
    // Not forked into the background: the daemon stays this session's child, in its group.
    constexpr int addressFd = 3;
    std::vector<std::string> argv = {"dbus-daemon", "--session", "--nofork", "--nopidfile",
                                     "--print-address=" + std::to_string(addressFd)};
    const pid_t pid = startHelper(argv, childEnvironment(), (dir_ / "dbus.log").string(),
                                  {{fds[1], addressFd}}, group_);
    if (pid < 0)
        return "Couldn't start dbus-daemon: " + std::string(std::strerror(errno));
    children_.push_back(pid);
    close(writeEnd.fd);
    writeEnd.fd = -1;
    std::string out = readLines(readEnd.fd, 1, Clock::now() + kStartLimit);
    auto newline = out.find('\n');
    if (newline == std::string::npos)
        return std::string("dbus-daemon printed no address");
    busAddress_ = out.substr(0, newline);
    bus_ = pid;
    return std::nullopt;
}

pid_t HeadlessSession::spawn(const std::vector<std::string>& argv, const std::string& logName) {
    const pid_t pid = startHelper(argv, childEnvironment(), (dir_ / logName).string(), {}, group_);
    if (pid < 0)
        return -1;
    children_.push_back(pid);
    return pid;
}

std::optional<std::string> HeadlessSession::writeQtConfig() const {
    const auto folder = dir_ / "config" / "qt6ct";
    std::error_code ec;
    std::filesystem::create_directories(folder, ec);
    std::FILE* f = std::fopen((folder / "qt6ct.conf").c_str(), "w");
    if (!f)
        return "Couldn't write " + (folder / "qt6ct.conf").string();
    std::fputs("[Appearance]\ncustom_palette=false\nstyle=Fusion\n", f);
    std::fclose(f);
    return std::nullopt;
}

void HeadlessSession::setResources(int scale) const {
    // What xrdb would load: the font dpi that Xft-drawn text reads.
    const std::string resources = "Xft.dpi:\t" + std::to_string(96 * scale) + "\n";
    xcb_connection_t* c = xcb_connect(display_.c_str(), nullptr);
    if (c && !xcb_connection_has_error(c)) {
        xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
        xcb_change_property(c, XCB_PROP_MODE_REPLACE, root, XCB_ATOM_RESOURCE_MANAGER,
                            XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(resources.size()),
                            resources.data());
        // The property must be set before the connection goes.
        std::free(xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr));
    }
    if (c)
        xcb_disconnect(c);
}

bool HeadlessSession::reloadSettings() const {
    return xsettingsd_ > 0 && kill(xsettingsd_, SIGHUP) == 0;
}

std::vector<std::string> HeadlessSession::childEnvironment() const {
    std::vector<std::string> result = environmentWith(env_);
    // The session is X11 only, and its Qt applications draw on its display, not offscreen.
    std::erase_if(result, [](const std::string& e) {
        return e.starts_with("WAYLAND_DISPLAY=") || e.starts_with("QT_QPA_PLATFORM=");
    });
    return result;
}

void HeadlessSession::applyToCurrentProcess() {
    auto save = [&](const std::string& name) {
        const char* old = std::getenv(name.c_str());
        savedVariables_.emplace_back(name, old ? std::optional<std::string>(old) : std::nullopt);
    };
    save("WAYLAND_DISPLAY");
    unsetenv("WAYLAND_DISPLAY");
    for (const auto& [key, value] : env_) {
        // The session's Qt theme is for its targets; this process draws offscreen.
        if (key == "QT_QPA_PLATFORMTHEME")
            continue;
        save(key);
        setenv(key.c_str(), value.c_str(), 1);
    }
}

void HeadlessSession::stopAll() {
    // Last started first: the window manager and daemons leave before their display does.
    for (auto it = children_.rbegin(); it != children_.rend(); ++it) {
        const pid_t pid = *it;
        if (kill(pid, SIGTERM) != 0) {
            waitpid(pid, nullptr, WNOHANG);
            continue;
        }
        if (!waitUntil([pid] { return isGone(pid); }, kStopLimit)) {
            kill(pid, SIGKILL);
            waitpid(pid, nullptr, 0);
        }
    }
    // Whatever the helpers started in their group (a service the bus activated) goes too.
    if (group_ > 0)
        killpg(group_, SIGKILL);
    children_.clear();
    bus_ = 0;
    group_ = 0;
}

std::vector<pid_t> HeadlessSession::processes() const {
    return children_;
}

HeadlessSession::~HeadlessSession() {
    stopAll();
    for (auto it = savedVariables_.rbegin(); it != savedVariables_.rend(); ++it) {
        if (it->second) {
            setenv(it->first.c_str(), it->second->c_str(), 1);
        } else {
            unsetenv(it->first.c_str());
        }
    }
    std::error_code ignored;
    if (!dir_.empty())
        std::filesystem::remove_all(dir_, ignored);
}

}  // namespace zd::x11
