#include "ProcProcessBackend.h"

#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QImage>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "ImageConversion.h"
#include "ToolRunner.h"

namespace zd::x11 {

namespace fs = std::filesystem;

namespace {

std::string readFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return {};
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

std::vector<std::string> splitNul(const std::string& text) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    while (start < text.size()) {
        const auto end = text.find('\0', start);
        parts.push_back(
            text.substr(start, end == std::string::npos ? std::string::npos : end - start));
        if (end == std::string::npos)
            break;
        start = end + 1;
    }
    return parts;
}

std::string variable(const std::vector<std::string>& environment, const std::string& name) {
    const std::string prefix = name + "=";
    for (const auto& entry : environment) {
        if (entry.rfind(prefix, 0) == 0)
            return entry.substr(prefix.size());
    }
    return {};
}

// Seconds since the epoch at which the machine started.
std::optional<long long> bootTime(const std::string& procRoot) {
    std::istringstream in(readFile(procRoot + "/stat"));
    for (std::string line; std::getline(in, line);) {
        if (line.rfind("btime ", 0) == 0)
            return std::stoll(line.substr(6));
    }
    return std::nullopt;
}

// ":0.0" and ":0" name the same display: the screen number doesn't tell desktops apart.
std::string displayWithoutScreen(const std::string& display) {
    const auto colon = display.rfind(':');
    const auto dot = display.find('.', colon == std::string::npos ? 0 : colon);
    return dot == std::string::npos ? display : display.substr(0, dot);
}

std::string baseName(const std::string& path) {
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

}  // namespace

ProcProcessBackend::ProcProcessBackend(Options options)
    : options_(std::move(options)),
      entries_(options_.dataDirs.empty() ? DesktopEntries::defaultDataDirs() : options_.dataDirs),
      bootTime_(bootTime(options_.procRoot)) {}

std::int32_t ProcProcessBackend::currentProcessId() const {
    return getpid();
}

std::optional<RunningApplication> ProcProcessBackend::read(
    std::int32_t pid, const std::map<std::int32_t, std::string>* windowClasses) const {
    if (pid <= 0)
        return std::nullopt;
    const fs::path dir = fs::path(options_.procRoot) / std::to_string(pid);
    struct stat info {};
    if (::stat(dir.c_str(), &info) != 0 || info.st_uid != getuid())
        return std::nullopt;

    // stat: "pid (comm) state … starttime(22nd)"; comm may hold spaces and parentheses.
    const std::string stat = readFile(dir / "stat");
    const auto close = stat.rfind(')');
    if (close == std::string::npos)
        return std::nullopt;
    std::istringstream fields(stat.substr(close + 2));
    std::string state;
    fields >> state;
    if (state == "Z" || state == "X")
        return std::nullopt;  // ended, only not yet reaped
    std::string skip;
    for (int i = 0; i < 18; ++i)
        fields >> skip;  // fields 4 to 21
    unsigned long long startTicks = 0;
    fields >> startTicks;

    std::error_code ec;
    const fs::path exe = fs::read_symlink(dir / "exe", ec);
    if (ec)
        return std::nullopt;  // kernel threads, or not ours to read

    RunningApplication app;
    app.pid = pid;
    app.executable = exe.string();
    // A replaced executable reads as "/usr/bin/gedit (deleted)".
    if (const auto mark = app.executable.rfind(" (deleted)");
        mark != std::string::npos && mark + 10 == app.executable.size()) {
        app.executable.erase(mark);
    }
    app.arguments = splitNul(readFile(dir / "cmdline"));
    app.environment = splitNul(readFile(dir / "environ"));
    if (!options_.display.empty() && displayWithoutScreen(variable(app.environment, "DISPLAY")) !=
                                         displayWithoutScreen(options_.display)) {
        return std::nullopt;
    }
    if (const auto boot = bootTime_) {
        const long ticks = sysconf(_SC_CLK_TCK);
        const auto sinceBoot = std::chrono::milliseconds(static_cast<long long>(startTicks) * 1000 /
                                                         (ticks > 0 ? ticks : 100));
        app.launchDate = std::chrono::system_clock::time_point(std::chrono::seconds(*boot)) +
                         std::chrono::duration_cast<std::chrono::system_clock::duration>(sinceBoot);
    }
    std::string comm = readFile(dir / "comm");
    while (!comm.empty() && comm.back() == '\n')
        comm.pop_back();
    app.localizedName = comm;

    auto entry = entryFor(app);
    std::string wmClass;
    if (!entry && options_.windowClasses) {
        std::map<std::int32_t, std::string> asked;
        if (!windowClasses)
            asked = options_.windowClasses();
        const auto& classes = windowClasses ? *windowClasses : asked;
        if (auto it = classes.find(pid); it != classes.end())
            wmClass = it->second;
        entry = entries_.forWindowClass(wmClass);
    }
    if (entry) {
        app.bundleIdentifier = entry->id;
        if (!entry->name.empty())
            app.localizedName = entry->name;
        app.icon = iconFor(*entry);
    } else if (!wmClass.empty()) {
        app.bundleIdentifier = wmClass;
        app.localizedName = wmClass;
    }
    app.activationPolicy = ActivationPolicy::regular;
    if (options_.taskbarPresence) {
        const auto presence = options_.taskbarPresence();
        if (auto it = presence.find(pid); it != presence.end() && !it->second)
            app.activationPolicy = ActivationPolicy::accessory;
    }

    if (app.bundleIdentifier) {
        std::lock_guard lock(mutex_);
        lastSeen_[*app.bundleIdentifier] =
            CommandLine{app.executable, app.arguments, fs::read_symlink(dir / "cwd", ec).string(),
                        variable(app.environment, "QT_QPA_PLATFORMTHEME")};
    }
    return app;
}

std::optional<DesktopEntry> ProcProcessBackend::entryFor(const RunningApplication& app) const {
    // GIO names the desktop file it launched from; "gio launch" and desktop shells do so.
    const std::string launched = variable(app.environment, "GIO_LAUNCHED_DESKTOP_FILE");
    if (!launched.empty()) {
        std::string id = baseName(launched);
        if (id.size() > 8 && id.compare(id.size() - 8, 8, ".desktop") == 0)
            id.resize(id.size() - 8);
        // Only if the file belongs to this program: the variable is inherited by children.
        if (auto entry = entries_.byId(id);
            entry && !entry->exec.empty() &&
            (baseName(entry->exec[0]) == baseName(app.executable) ||
             (!app.arguments.empty() && baseName(entry->exec[0]) == baseName(app.arguments[0])))) {
            return entry;
        }
    }
    const std::string script = app.arguments.size() > 1 ? app.arguments[1] : std::string();
    if (auto entry = entries_.forProgram(app.executable, script))
        return entry;
    if (!app.arguments.empty()) {
        if (auto entry = entries_.forProgram(app.arguments[0], script))
            return entry;
    }
    return std::nullopt;
}

std::optional<Image> ProcProcessBackend::iconFor(const DesktopEntry& entry) const {
    if (entry.icon.empty())
        return std::nullopt;
    std::lock_guard lock(mutex_);
    if (auto it = icons_.find(entry.icon); it != icons_.end())
        return it->second;
    std::vector<fs::path> candidates;
    if (entry.icon.front() == '/') {
        candidates.emplace_back(entry.icon);
    } else {
        for (const char* size : {"128x128", "256x256", "64x64", "48x48", "32x32"}) {
            candidates.push_back(fs::path("/usr/share/icons/hicolor") / size / "apps" /
                                 (entry.icon + ".png"));
        }
        candidates.push_back(fs::path("/usr/share/pixmaps") / (entry.icon + ".png"));
    }
    std::optional<Image> icon;
    for (const auto& candidate : candidates) {
        QImage image;
        if (image.load(QString::fromStdString(candidate.string()))) {
            icon = fromQImage(image.convertToFormat(QImage::Format_ARGB32_Premultiplied));
            break;
        }
    }
    icons_[entry.icon] = icon;
    return icon;
}

std::optional<RunningApplication> ProcProcessBackend::runningApplication(std::int32_t pid) const {
    return read(pid, nullptr);
}

std::vector<RunningApplication> ProcProcessBackend::runningApplications(
    const std::string& bundleIdentifier) const {
    std::vector<RunningApplication> found;
    // One question to the display for all processes, not one per process.
    const auto classes =
        options_.windowClasses ? options_.windowClasses() : std::map<std::int32_t, std::string>{};
    std::error_code ec;
    for (fs::directory_iterator it(options_.procRoot, ec), end; !ec && it != end;
         it.increment(ec)) {
        const std::string name = it->path().filename().string();
        if (name.empty() || name.find_first_not_of("0123456789") != std::string::npos)
            continue;
        if (name.size() > 9)
            continue;
        if (auto app = read(static_cast<std::int32_t>(std::stol(name)), &classes);
            app && app->bundleIdentifier == bundleIdentifier) {
            found.push_back(std::move(*app));
        }
    }
    return found;
}

bool ProcProcessBackend::activate(std::int32_t pid) {
    return options_.activateWindows && read(pid, nullptr) && options_.activateWindows(pid);
}

bool ProcProcessBackend::terminate(std::int32_t pid) {
    return pid > 0 && read(pid, nullptr) && ::kill(pid, SIGTERM) == 0;
}

bool ProcProcessBackend::forceTerminate(std::int32_t pid) {
    return pid > 0 && read(pid, nullptr) && ::kill(pid, SIGKILL) == 0;
}

std::optional<std::string> ProcProcessBackend::applicationLocation(
    const std::string& bundleIdentifier) const {
    {
        std::lock_guard lock(mutex_);
        if (auto it = lastSeen_.find(bundleIdentifier); it != lastSeen_.end()) {
            if (fs::exists(it->second.executable))
                return it->second.executable;
        }
    }
    if (auto entry = entries_.byId(bundleIdentifier); entry && !entry->exec.empty()) {
        return entry->exec.front();
    }
    return std::nullopt;
}

Expected<std::int32_t, std::string> ProcProcessBackend::launch(const LaunchRequest& request) {
    SpawnRequest spawn;
    auto overrides = request.environment;
    {
        std::lock_guard lock(mutex_);
        for (const auto& [id, seen] : lastSeen_) {
            if (seen.executable == request.location && !seen.arguments.empty()) {
                spawn.argv = seen.arguments;
                spawn.workingDirectory = seen.workingDirectory;
                if (!seen.qtPlatformTheme.empty())
                    overrides.emplace_back("QT_QPA_PLATFORMTHEME", seen.qtPlatformTheme);
                break;
            }
        }
    }
    if (spawn.argv.empty())
        spawn.argv = {request.location};
    // The program itself, not whatever its argv[0] names, is what starts.
    if (request.location.front() == '/')
        spawn.argv.front() = request.location;
    spawn.argv.insert(spawn.argv.end(), request.arguments.begin(), request.arguments.end());
    spawn.environment = environmentWith(overrides);
    // Desktop launches pass these on; a relaunched instance mustn't inherit ours.
    std::erase_if(spawn.environment, [](const std::string& entry) {
        return entry.rfind("DESKTOP_STARTUP_ID=", 0) == 0 ||
               entry.rfind("GIO_LAUNCHED_DESKTOP_FILE", 0) == 0;
    });
    const auto pid = spawnDetached(spawn);
    if (!pid)
        return unexpected(pid.error());
    return static_cast<std::int32_t>(*pid);
}

}  // namespace zd::x11
