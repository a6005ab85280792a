#include "LanguageOverrideStore.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "control/LanguageLaunch.h"

namespace zd::x11 {

namespace fs = std::filesystem;

namespace {

constexpr int failed = 1;

// The tool prints a value bare when it is a plain word, else in double quotes.
std::string printed(const std::string& value) {
    const bool plain = !value.empty() && std::all_of(value.begin(), value.end(), [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '.';
    });
    if (plain)
        return value;
    std::string quoted = "\"";
    for (char c : value) {
        if (c == '"' || c == '\\')
            quoted.push_back('\\');
        quoted.push_back(c);
    }
    return quoted + "\"";
}

std::vector<std::string> splitTabs(const std::string& line) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (;;) {
        const auto tab = line.find('\t', start);
        parts.push_back(
            line.substr(start, tab == std::string::npos ? std::string::npos : tab - start));
        if (tab == std::string::npos)
            return parts;
        start = tab + 1;
    }
}

bool storable(const std::string& text) {
    return text.find_first_of("\t\n\r") == std::string::npos;
}

std::string localeToCode(std::string locale) {
    locale = locale.substr(0, locale.find_first_of(".@"));
    std::replace(locale.begin(), locale.end(), '_', '-');
    return locale;
}

}  // namespace

LanguageOverrideStore::LanguageOverrideStore(fs::path folder) : folder_(std::move(folder)) {
    if (folder_.empty()) {
        const char* config = std::getenv("XDG_CONFIG_HOME");
        const char* home = std::getenv("HOME");
        const fs::path base =
            config && *config ? fs::path(config) : fs::path(home ? home : "/tmp") / ".config";
        folder_ = base / "zephyrdock" / "overrides";
    }
}

fs::path LanguageOverrideStore::fileFor(const std::string& domain) const {
    // A domain is a file name here: nothing that could leave the folder.
    if (domain.empty() || domain.front() == '.' || domain.find('/') != std::string::npos ||
        !storable(domain)) {
        return {};
    }
    return folder_ / domain;
}

std::vector<LanguageOverrideStore::Entry> LanguageOverrideStore::load(const fs::path& file) const {
    std::vector<Entry> entries;
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);) {
        const auto parts = splitTabs(line);
        if (parts.size() < 2 || (parts[1] != "-array" && parts[1] != "-string"))
            continue;
        Entry entry{parts[0], parts[1] == "-array", {parts.begin() + 2, parts.end()}};
        if (!entry.isArray && entry.values.size() != 1)
            continue;
        entries.push_back(std::move(entry));
    }
    return entries;
}

bool LanguageOverrideStore::save(const fs::path& file, const std::vector<Entry>& entries) const {
    std::error_code ec;
    if (entries.empty()) {
        fs::remove(file, ec);
        return !ec;
    }
    fs::create_directories(folder_, ec);
    const fs::path temporary = file.string() + ".new";
    {
        std::ofstream out(temporary, std::ios::trunc);
        for (const auto& entry : entries) {
            out << entry.key << '\t' << (entry.isArray ? "-array" : "-string");
            for (const auto& value : entry.values)
                out << '\t' << value;
            out << '\n';
        }
        if (!out.flush())
            return false;
    }
    fs::rename(temporary, file, ec);  // whole or not at all
    return !ec;
}

std::optional<ToolResult> LanguageOverrideStore::runDefaults(
    const std::vector<std::string>& arguments) {
    std::lock_guard lock(mutex_);
    if (arguments.size() < 3)
        return ToolResult{failed, {}};
    const std::string& command = arguments[0];
    const fs::path file = fileFor(arguments[1]);
    const std::string& key = arguments[2];
    if (file.empty() || key.empty() || !storable(key))
        return ToolResult{failed, {}};
    auto entries = load(file);
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&key](const Entry& e) { return e.key == key; });

    if (command == "read" && arguments.size() == 3) {
        if (found == entries.end())
            return ToolResult{failed, {}};
        if (!found->isArray)
            return ToolResult{0, found->values.front() + "\n"};
        std::string text = "(\n";
        for (std::size_t i = 0; i < found->values.size(); ++i) {
            text +=
                "    " + printed(found->values[i]) + (i + 1 < found->values.size() ? ",\n" : "\n");
        }
        return ToolResult{0, text + ")\n"};
    }
    if (command == "delete" && arguments.size() == 3) {
        if (found == entries.end())
            return ToolResult{failed, {}};
        entries.erase(found);
        return ToolResult{save(file, entries) ? 0 : failed, {}};
    }
    if (command == "write" && arguments.size() >= 4 &&
        (arguments[3] == "-array" || (arguments[3] == "-string" && arguments.size() == 5))) {
        Entry entry{key, arguments[3] == "-array", {arguments.begin() + 4, arguments.end()}};
        if (!std::all_of(entry.values.begin(), entry.values.end(), storable)) {
            return ToolResult{failed, {}};
        }
        if (found != entries.end()) {
            *found = std::move(entry);
        } else {
            entries.push_back(std::move(entry));
        }
        return ToolResult{save(file, entries) ? 0 : failed, {}};
    }
    return ToolResult{failed, {}};
}

std::vector<std::string> LanguageOverrideStore::preferredLanguages() const {
    std::vector<std::string> codes;
    auto add = [&codes](const std::string& locale) {
        const std::string code = localeToCode(locale);
        if (code.empty() || code == "C" || code == "POSIX")
            return;
        if (std::find(codes.begin(), codes.end(), code) == codes.end())
            codes.push_back(code);
    };
    const char* lcAll = std::getenv("LC_ALL");
    const char* language = std::getenv("LANGUAGE");
    const bool cLocale = lcAll && (std::string(lcAll) == "C" || std::string(lcAll) == "POSIX");
    // gettext ignores LANGUAGE under the C locale.
    if (language && *language && !cLocale) {
        std::istringstream list(language);
        for (std::string item; std::getline(list, item, ':');)
            add(item);
    }
    if (codes.empty()) {
        for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
            const char* value = std::getenv(name);
            if (value && *value) {
                add(value);
                break;
            }
        }
    }
    return codes;
}

LanguageLaunchSettings LanguageOverrideStore::launchSettings(
    const std::string& languageCode) const {
    return LanguageLaunch::posixEnvironment(languageCode);
}

}  // namespace zd::x11
