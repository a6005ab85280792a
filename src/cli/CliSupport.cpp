#include "CliSupport.h"

#include <filesystem>

#include "linux/FileSettingsStore.h"

namespace zd::cli {

std::unique_ptr<FileSettingsStore> openSettings(Context& context) {
    auto path = context.settingsFile ? context.settingsFile : FileSettingsStore::defaultPath();
    if (!path) {
        *context.err << "zephyrdock: cannot find the settings file: neither XDG_CONFIG_HOME nor "
                        "HOME is set; give one with --settings-file\n";
        return nullptr;
    }
    return std::make_unique<FileSettingsStore>(*path);
}

std::string absolutePath(const std::string& path) {
    std::error_code error;
    auto absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute.lexically_normal().string();
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
