#include "ContactSheet.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <tuple>

namespace zd::cli {

namespace {

std::string escaped(const std::string& text) {
    std::string result;
    for (char c : text) {
        switch (c) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '"':
                result += "&quot;";
                break;
            default:
                result += c;
        }
    }
    return result;
}

// File names hold blanks and "—": written as percent escapes in the links.
std::string linkTo(const std::string& file) {
    static const char* hex = "0123456789ABCDEF";
    std::string result;
    for (unsigned char c : file) {
        if (std::isalnum(c) || c == '/' || c == '.' || c == '-' || c == '_') {
            result += static_cast<char>(c);
        } else {
            result += '%';
            result += hex[c >> 4];
            result += hex[c & 15];
        }
    }
    return result;
}

}  // namespace

bool writeContactSheet(const std::filesystem::path& folder, const std::string& title,
                       const std::vector<SheetPicture>& pictures, const std::string& fileName) {
    std::ofstream file(folder / fileName, std::ios::binary | std::ios::trunc);
    if (!file)
        return false;
    file << "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>" << escaped(title)
         << "</title>\n<style>body{font-family:sans-serif;background:#eee;margin:24px}"
            "main{display:flex;flex-wrap:wrap;gap:20px}figure{margin:0;width:360px}"
            "img{width:100%;border:1px solid #bbb;border-radius:6px;background:#fff}"
            "figcaption{font-size:13px;margin-top:4px}</style></head>\n<body><h1>"
         << escaped(title) << "</h1>\n<main>\n";
    for (const auto& picture : pictures) {
        file << "<figure><a href=\"" << linkTo(picture.file) << "\"><img src=\""
             << linkTo(picture.file) << "\" alt=\"" << escaped(picture.label)
             << "\"></a><figcaption>" << escaped(picture.label) << "</figcaption></figure>\n";
    }
    file << "</main></body></html>\n";
    return static_cast<bool>(file);
}

std::vector<SheetPicture> runPictures(const std::filesystem::path& runRoot,
                                      const std::vector<LanguageSelection>& languages) {
    std::vector<std::tuple<std::size_t, std::string, int, std::string, std::string>> found;
    std::error_code error;
    for (auto it = std::filesystem::recursive_directory_iterator(runRoot, error);
         !error && it != std::filesystem::recursive_directory_iterator(); it.increment(error)) {
        if (!it->is_regular_file() || it->path().extension() != ".png")
            continue;
        const std::string folder = it->path().parent_path().filename().string();
        const auto place = std::find_if(languages.begin(), languages.end(),
                                        [&](const auto& l) { return l.code == folder; });
        const std::string stem = it->path().stem().string();
        const std::string label = place == languages.end()
                                      ? folder + " \u2014 " + stem
                                      : place->label + " (" + folder + ") \u2014 " + stem;
        found.emplace_back(static_cast<std::size_t>(place - languages.begin()), folder,
                           stem.find("dark") != std::string::npos ? 1 : 0,
                           std::filesystem::relative(it->path(), runRoot).string(), label);
    }
    std::sort(found.begin(), found.end());
    std::vector<SheetPicture> pictures;
    for (const auto& picture : found)
        pictures.push_back({std::get<3>(picture), std::get<4>(picture)});
    return pictures;
}

}  // namespace zd::cli
