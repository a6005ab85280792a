#include "store/AppStreamScreenshots.h"

#include <algorithm>
#include <cctype>
#include <map>

namespace zd::AppStreamScreenshots {

namespace {

std::string escaped(const std::string& text) {
    std::string out;
    for (char c : text) {
        switch (c) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            default:
                out += c;
        }
    }
    return out;
}

// Percent-encodes everything but unreserved characters and the "/" between segments.
std::string urlPath(const std::string& path) {
    static const char* hex = "0123456789ABCDEF";
    std::string out;
    for (unsigned char c : path) {
        if (std::isalnum(c) || c == '-' || c == '_' || c == '.' || c == '~' || c == '/') {
            out += static_cast<char>(c);
        } else {
            out += '%';
            out += hex[c >> 4];
            out += hex[c & 15];
        }
    }
    return out;
}

std::string image(const Picture& p, const std::string& base, const std::string& language) {
    std::string line = "    <image type=\"source\" width=\"" + std::to_string(p.width) +
                       "\" height=\"" + std::to_string(p.height) + "\"";
    if (!language.empty())
        line += " xml:lang=\"" + escaped(language) + "\"";
    return line + ">" + escaped(base + urlPath(p.relativePath)) + "</image>\n";
}

}  // namespace

std::string metainfoLanguage(const std::string& code) {
    std::string out = code;
    std::replace(out.begin(), out.end(), '-', '_');
    return out;
}

std::string xml(const std::vector<Picture>& pictures, const std::string& baseURL) {
    const std::string base = baseURL.empty() || baseURL.back() == '/' ? baseURL : baseURL + "/";
    // Pictures by name, in the order each name first appears.
    std::vector<std::string> names;
    std::map<std::string, std::vector<const Picture*>> byName;
    for (const Picture& p : pictures) {
        if (byName[p.name].empty())
            names.push_back(p.name);
        byName[p.name].push_back(&p);
    }
    std::string out = "<screenshots>\n";
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto& images = byName[names[i]];
        out += i == 0 ? "  <screenshot type=\"default\">\n" : "  <screenshot>\n";
        std::string name = names[i];  // "--" may not appear in a comment
        for (auto at = name.find("--"); at != std::string::npos; at = name.find("--"))
            name.replace(at, 2, "- -");
        out += "    <!-- " + name + ": say what this picture shows -->\n";
        out += "    <caption></caption>\n";
        out += image(*images.front(), base, "");
        for (const Picture* p : images) {
            if (!p->languageCode.empty())
                out += image(*p, base, metainfoLanguage(p->languageCode));
        }
        out += "  </screenshot>\n";
    }
    return out + "</screenshots>\n";
}

}  // namespace zd::AppStreamScreenshots
