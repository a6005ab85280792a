#pragma once
// A private headless desktop: Xvfb on a free display, openbox, a D-Bus session bus (so gsettings
// reaches dconf) with the accessibility bus, xsettingsd with its own config file and a qt6ct
// config for Qt applications, all confined to a temporary folder.
// It runs at a scale (2 unless told otherwise) as a Retina Mac does: a screen of that many
// pixels per point, with every toolkit told so (GDK_SCALE and XSETTINGS for GTK,
// QT_SCALE_FACTOR for Qt, Xft.dpi in the root's resources for Xft), so its captures are real
// pixels at that density.
// Integration tests and the command line start one, run targets inside it and let the
// destructor end every process it started, each by its own pid. The helpers share one process
// group of their own (so a Ctrl-C meant for this program doesn't reach them) and get SIGTERM
// when the thread that started the session ends, even when it is killed outright.

#include <sys/types.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "model/Expected.h"

namespace zd::x11 {

class HeadlessSession {
  public:
    struct Options {
        int width = 1440;  // points; the screen has width × scale pixels
        int height = 900;
        int scale = 2;
        bool windowManager = true;   // openbox
        bool sessionBus = true;      // dbus-daemon; gsettings needs it
        bool settingsDaemon = true;  // xsettingsd
    };
    using Variable = std::pair<std::string, std::string>;

    // Starts the processes and waits until the display answers (and the window manager has
    // taken it). The text tells what failed to start.
    static Expected<std::unique_ptr<HeadlessSession>, std::string> start(Options options);
    static Expected<std::unique_ptr<HeadlessSession>, std::string> start() { return start({}); }

    HeadlessSession(const HeadlessSession&) = delete;
    HeadlessSession& operator=(const HeadlessSession&) = delete;
    // Ends each started process by its pid (last started first), restores the variables that
    // applyToCurrentProcess changed and removes the folder.
    ~HeadlessSession();

    const std::string& display() const { return display_; }  // ":N"
    const std::filesystem::path& directory() const { return dir_; }
    const std::string& busAddress() const { return busAddress_; }
    // The XSETTINGS values xsettingsd serves; rewrite it and call reloadSettings().
    std::filesystem::path settingsConfig() const { return dir_ / "xsettingsd.conf"; }
    pid_t settingsDaemonPid() const { return xsettingsd_; }
    // The display server's process.
    pid_t displayServerPid() const { return xvfb_; }
    // Every helper process, in the order started, and the process group they share.
    std::vector<pid_t> processes() const;
    pid_t processGroup() const { return group_; }
    // Makes xsettingsd read its config file again (it answers SIGHUP).
    bool reloadSettings() const;

    // The variables a process started inside the session needs (DISPLAY, the bus, XDG folders).
    const std::vector<Variable>& environment() const { return env_; }
    // The whole environment for a child: this process's own, overridden by environment().
    std::vector<std::string> childEnvironment() const;
    // Sets environment() in this process (e.g. so xcb_connect(nullptr) reaches the session).
    void applyToCurrentProcess();

  private:
    HeadlessSession() = default;
    std::optional<std::string> launch(Options options);
    std::optional<std::string> startDisplay(const Options& options);
    std::optional<std::string> startBus();
    std::optional<std::string> writeQtConfig() const;
    pid_t spawn(const std::vector<std::string>& argv, const std::string& logName);
    void setResources(int scale) const;
    void stopAll();

    std::filesystem::path dir_;
    std::string display_;
    std::string busAddress_;
    std::vector<Variable> env_;
    std::vector<pid_t> children_;  // every helper, reaped with waitpid
    pid_t group_ = 0;              // led by the display server
    pid_t bus_ = 0;
    pid_t xsettingsd_ = 0;
    pid_t xvfb_ = 0;
    std::vector<std::pair<std::string, std::optional<std::string>>> savedVariables_;
};

}  // namespace zd::x11
