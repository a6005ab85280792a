#include "CliSupport.h"

#include <filesystem>

#include "common/FileSettingsStore.h"
#include "common/PlatformEnvironment.h"

namespace zd::cli {

std::unique_ptr<SettingsStore> openSettings(Context& context) {
    auto store = PlatformEnvironment::openSettings(context.settingsFile.value_or(""));
    if (!store) {
        *context.err << "zephyrdock: cannot find the settings file: neither XDG_CONFIG_HOME nor "
                        "HOME is set; give one with --settings-file\n";
    }
    return store;
}

std::string settingsLocation(const SettingsStore& store) {
    if (const auto* file = dynamic_cast<const FileSettingsStore*>(&store))
        return file->path();
    return PlatformEnvironment::userSettingsPlace();
}

std::string absolutePath(const std::string& path) {
    std::error_code error;
    auto absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute.lexically_normal().string();
}

void warnAboutSettingsFile(Context& context, const SettingsStore& settings) {
    const auto* file = dynamic_cast<const FileSettingsStore*>(&settings);
    if (!file)
        return;
    const FileSettingsStore& store = *file;
    if (auto why = store.unusablePath()) {
        *context.err << "zephyrdock: " << store.path() << " " << *why
                     << ", not a settings file; every key falls back\n";
    } else if (store.fileIsUnreadable()) {
        *context.err << "zephyrdock: " << store.path()
                     << " can't be read as settings; every key falls back. The next change "
                        "keeps a copy of it beside it\n";
    }
}

std::string printable(std::string_view text) {
    static constexpr char hex[] = "0123456789abcdef";
    std::string result;
    for (unsigned char c : text) {
        if (c < 0x20 || c == 0x7f) {
            result += "\\x";
            result += hex[c >> 4];
            result += hex[c & 15];
        } else {
            result += static_cast<char>(c);
        }
    }
    return result;
}

std::string padded(const std::string& text, std::size_t width) {
    std::size_t characters = 0;
    for (unsigned char c : text) {
        if ((c & 0xC0) != 0x80)
            ++characters;  // continuation bytes don't start a character
    }
    std::string result = text;
    result.append(characters < width ? width - characters : 1, ' ');
    return result;
}

}  // namespace zd::cli
