#include "DesktopEntries.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <map>
#include <set>

namespace zd::x11 {

namespace fs = std::filesystem;

namespace {

std::string envOr(const char* name, const std::string& fallback) {
    const char* value = std::getenv(name);
    return value && *value ? std::string(value) : fallback;
}

std::string fileName(const std::string& path) {
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

// The user's message language as desktop files tag it: "de_DE", "de".
std::vector<std::string> localeTags() {
    std::string locale = envOr("LC_ALL", envOr("LC_MESSAGES", envOr("LANG", "")));
    locale = locale.substr(0, locale.find_first_of(".@"));
    if (locale.empty() || locale == "C" || locale == "POSIX")
        return {};
    std::vector<std::string> tags{locale};
    if (auto underscore = locale.find('_'); underscore != std::string::npos) {
        tags.push_back(locale.substr(0, underscore));
    }
    return tags;
}

bool isInterpreter(const std::string& program) {
    static const std::set<std::string> names{"python", "python3", "perl", "ruby", "sh", "bash",
                                             "dash",   "node",    "gjs",  "java", "env"};
    return names.count(program) > 0 || program.rfind("python3.", 0) == 0;
}

}  // namespace

DesktopEntries::DesktopEntries(std::vector<fs::path> dataDirs) : dirs_(std::move(dataDirs)) {}

std::vector<fs::path> DesktopEntries::defaultDataDirs() {
    std::vector<fs::path> dirs;
    const char* home = std::getenv("HOME");
    dirs.emplace_back(envOr("XDG_DATA_HOME", home ? std::string(home) + "/.local/share" : ""));
    const std::string list = envOr("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
    std::size_t start = 0;
    while (start <= list.size()) {
        const auto end = std::min(list.find(':', start), list.size());
        if (end > start)
            dirs.emplace_back(list.substr(start, end - start));
        start = end + 1;
    }
    return dirs;
}

std::vector<std::string> DesktopEntries::splitExec(const std::string& exec) {
    std::vector<std::string> words;
    std::string word;
    bool inWord = false;
    bool quoted = false;
    for (std::size_t i = 0; i < exec.size(); ++i) {
        const char c = exec[i];
        if (quoted) {
            if (c == '\\' && i + 1 < exec.size()) {
                word.push_back(exec[++i]);
            } else if (c == '"') {
                quoted = false;
            } else {
                word.push_back(c);
            }
        } else if (c == '"') {
            quoted = inWord = true;
        } else if (c == ' ' || c == '\t') {
            if (inWord)
                words.push_back(word);
            word.clear();
            inWord = false;
        } else {
            word.push_back(c);
            inWord = true;
        }
    }
    if (inWord)
        words.push_back(word);
    std::vector<std::string> kept;
    for (auto& w : words) {
        if (w.size() == 2 && w[0] == '%')
            continue;  // %f %F %u %U %i %c %k …
        std::string unescaped;
        for (std::size_t i = 0; i < w.size(); ++i) {
            unescaped.push_back(w[i]);
            if (w[i] == '%' && i + 1 < w.size() && w[i + 1] == '%')
                ++i;
        }
        kept.push_back(unescaped);
    }
    return kept;
}

std::optional<DesktopEntry> DesktopEntries::read(const fs::path& file, std::string id) {
    std::ifstream in(file);
    if (!in)
        return std::nullopt;
    std::map<std::string, std::string> keys;
    bool inMain = false;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#')
            continue;
        if (line[0] == '[') {
            inMain = line.rfind("[Desktop Entry]", 0) == 0;
            continue;
        }
        if (!inMain)
            continue;
        const auto eq = line.find('=');
        if (eq == std::string::npos)
            continue;
        std::string key = line.substr(0, eq);
        while (!key.empty() && key.back() == ' ')
            key.pop_back();
        std::string value = line.substr(eq + 1);
        while (!value.empty() && value.front() == ' ')
            value.erase(value.begin());
        keys.emplace(key, value);
    }
    if (keys["Type"] != "Application" || keys["Hidden"] == "true" || keys["Exec"].empty()) {
        return std::nullopt;
    }
    DesktopEntry entry;
    entry.id = std::move(id);
    entry.name = keys["Name"];
    for (const auto& tag : localeTags()) {
        if (auto it = keys.find("Name[" + tag + "]"); it != keys.end()) {
            entry.name = it->second;
            break;
        }
    }
    entry.exec = splitExec(keys["Exec"]);
    entry.icon = keys["Icon"];
    entry.startupWMClass = keys["StartupWMClass"];
    entry.noDisplay = keys["NoDisplay"] == "true";
    return entry;
}

void DesktopEntries::load() const { std::call_once(loaded_, [this] { loadOnce(); }); }

void DesktopEntries::loadOnce() const {
    std::set<std::string> seen;  // an earlier folder shadows a later one
    for (const auto& dir : dirs_) {
        const fs::path apps = dir / "applications";
        std::error_code ec;
        std::vector<fs::path> files;
        for (fs::recursive_directory_iterator it(apps, ec), end; !ec && it != end;
             it.increment(ec)) {
            if (it->path().extension() == ".desktop")
                files.push_back(it->path());
        }
        std::sort(files.begin(), files.end());
        for (const auto& file : files) {
            // Subfolders become part of the id with "-": kde/foo.desktop is kde-foo.
            std::string id = fs::relative(file, apps, ec).replace_extension().string();
            std::replace(id.begin(), id.end(), '/', '-');
            if (!seen.insert(id).second)
                continue;
            if (auto entry = read(file, id))
                entries_.push_back(std::move(*entry));
        }
    }
}

std::optional<DesktopEntry> DesktopEntries::byId(const std::string& id) const {
    load();
    for (const auto& entry : entries_) {
        if (entry.id == id)
            return entry;
    }
    return std::nullopt;
}

std::optional<DesktopEntry> DesktopEntries::forProgram(const std::string& executable,
                                                       const std::string& script) const {
    load();
    const std::string program = fileName(executable);
    const std::string scriptName = fileName(script);
    if (program.empty())
        return std::nullopt;
    for (const auto& entry : entries_) {
        if (entry.exec.empty())
            continue;
        // Skip "env VAR=value" in front of the command.
        std::size_t i = 0;
        if (fileName(entry.exec[0]) == "env") {
            for (i = 1; i < entry.exec.size() && entry.exec[i].find('=') != std::string::npos;
                 ++i) {
            }
        }
        if (i >= entry.exec.size())
            continue;
        const std::string command = fileName(entry.exec[i]);
        if (isInterpreter(program)) {
            if (!scriptName.empty() && command == scriptName)
                return entry;
            if (command == program && i + 1 < entry.exec.size() &&
                fileName(entry.exec[i + 1]) == scriptName && !scriptName.empty()) {
                return entry;
            }
        } else if (command == program) {
            return entry;
        }
    }
    return std::nullopt;
}

std::optional<DesktopEntry> DesktopEntries::forWindowClass(const std::string& wmClass) const {
    load();
    if (wmClass.empty())
        return std::nullopt;
    auto lower = [](std::string s) {
        for (char& c : s)
            c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        return s;
    };
    const std::string wanted = lower(wmClass);
    for (const auto& entry : entries_) {
        const std::string id = lower(entry.id);
        if (lower(entry.startupWMClass) == wanted || id == wanted ||
            (id.size() > wanted.size() &&
             id.compare(id.size() - wanted.size(), wanted.size(), wanted) == 0 &&
             id[id.size() - wanted.size() - 1] == '.')) {
            return entry;
        }
    }
    return std::nullopt;
}

}  // namespace zd::x11
