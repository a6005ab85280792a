#include "DesktopScale.h"

#include <charconv>
#include <cstdlib>

namespace zd::x11 {

namespace {

constexpr double kBaseDpi = 96.0;
// Beyond this a value is taken for a mistake rather than a screen.
constexpr double kLargestScale = 8.0;

std::optional<double> sensible(double scale) {
    if (!(scale >= 1.0 && scale <= kLargestScale))  // also NaN
        return std::nullopt;
    return scale;
}

std::optional<double> number(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    double value = 0;
    auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (ec != std::errc() || end == text.data())
        return std::nullopt;
    return value;
}

// Reads XSETTINGS' fixed-size words in the byte order the property names.
class Reader {
  public:
    Reader(std::string_view data, bool bigEndian) : data_(data), bigEndian_(bigEndian) {}
    bool has(std::size_t n) const { return pos_ + n <= data_.size(); }
    void skip(std::size_t n) { pos_ += n; }
    std::uint32_t word(std::size_t bytes) {
        std::uint32_t v = 0;
        for (std::size_t i = 0; i < bytes; ++i) {
            const auto byte =
                static_cast<std::uint8_t>(data_[pos_ + (bigEndian_ ? i : bytes - 1 - i)]);
            v = (v << 8) | byte;
        }
        pos_ += bytes;
        return v;
    }
    std::string_view take(std::size_t n) {
        std::string_view part = data_.substr(pos_, n);
        pos_ += n;
        return part;
    }

  private:
    std::string_view data_;
    bool bigEndian_;
    std::size_t pos_ = 0;
};

constexpr std::size_t padded(std::size_t n) {
    return (n + 3) & ~std::size_t{3};
}

}  // namespace

std::map<std::string, std::int32_t> xsettingsIntegers(std::string_view data) {
    std::map<std::string, std::int32_t> result;
    if (data.size() < 12)
        return result;
    Reader in(data, data[0] != 0);
    in.skip(8);  // byte order, padding, serial
    const std::uint32_t count = in.word(4);
    for (std::uint32_t i = 0; i < count && in.has(4); ++i) {
        const std::uint32_t type = in.word(1);
        in.skip(1);
        const std::size_t nameLength = in.word(2);
        if (!in.has(padded(nameLength) + 4))
            break;
        std::string name(in.take(nameLength));
        in.skip(padded(nameLength) - nameLength + 4);  // padding, last-change serial
        if (type == 0) {
            if (!in.has(4))
                break;
            result[name] = static_cast<std::int32_t>(in.word(4));
        } else if (type == 1) {
            if (!in.has(4))
                break;
            const std::size_t length = in.word(4);
            if (!in.has(padded(length)))
                break;
            in.skip(padded(length));
        } else if (type == 2) {
            if (!in.has(8))
                break;
            in.skip(8);
        } else {
            break;
        }
    }
    return result;
}

std::optional<double> xftDpi(std::string_view resources) {
    constexpr std::string_view key = "Xft.dpi:";
    std::size_t start = 0;
    while (start < resources.size()) {
        std::size_t end = resources.find('\n', start);
        if (end == std::string_view::npos)
            end = resources.size();
        std::string_view line = resources.substr(start, end - start);
        if (line.starts_with(key))
            return number(line.substr(key.size()));
        start = end + 1;
    }
    return std::nullopt;
}

double desktopScale(const DesktopScaleSources& sources) {
    const auto& xs = sources.xsettingsIntegers;
    if (auto it = xs.find("Gdk/WindowScalingFactor"); it != xs.end()) {
        if (auto scale = sensible(it->second))
            return *scale;
    }
    if (sources.gdkScale) {
        if (auto value = number(*sources.gdkScale); value && sensible(*value))
            return *value;
    }
    if (sources.resourceManager) {
        if (auto dpi = xftDpi(*sources.resourceManager); dpi && sensible(*dpi / kBaseDpi))
            return *dpi / kBaseDpi;
    }
    if (auto it = xs.find("Xft/DPI"); it != xs.end()) {
        if (auto scale = sensible(it->second / 1024.0 / kBaseDpi))
            return *scale;
    }
    return 1.0;
}

}  // namespace zd::x11
