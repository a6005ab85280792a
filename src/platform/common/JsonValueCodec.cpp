#include "JsonValueCodec.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace zd::JsonValueCodec {

namespace {

constexpr int maxDepth = 200;

void appendString(std::string& out, const std::string& text) {
    out += '"';
    for (unsigned char c : text) {
        switch (c) {
            case '"':
                out += "\\\"";
                break;
            case '\\':
                out += "\\\\";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\r':
                out += "\\r";
                break;
            case '\t':
                out += "\\t";
                break;
            case '\b':
                out += "\\b";
                break;
            case '\f':
                out += "\\f";
                break;
            default:
                if (c < 0x20) {
                    char escaped[8];
                    std::snprintf(escaped, sizeof escaped, "\\u%04x", c);
                    out += escaped;
                } else {
                    out += static_cast<char>(c);  // UTF-8 passes through as it is
                }
        }
    }
    out += '"';
}

void appendDouble(std::string& out, double number) {
    if (!std::isfinite(number)) {
        out += "null";
        return;
    }
    char buffer[40];
    auto end = std::to_chars(buffer, buffer + sizeof buffer, number).ptr;
    std::string_view text(buffer, static_cast<std::size_t>(end - buffer));
    out += text;
    // Keep it a floating-point number when read back.
    if (text.find_first_of(".eEn") == std::string_view::npos)
        out += ".0";
}

void encodeInto(std::string& out, const Value& value, int indent) {
    auto newline = [&](int level) {
        out += '\n';
        out.append(static_cast<std::size_t>(level) * 2, ' ');
    };
    if (auto flag = value.asBool()) {
        out += *flag ? "true" : "false";
    } else if (auto integer = value.asInteger()) {
        out += std::to_string(*integer);
    } else if (value.isDouble()) {
        appendDouble(out, *value.asNumber());
    } else if (const auto* text = value.asString()) {
        appendString(out, *text);
    } else if (const auto* array = value.asArray()) {
        if (array->empty()) {
            out += "[]";
            return;
        }
        out += '[';
        for (std::size_t i = 0; i < array->size(); ++i) {
            if (i > 0)
                out += ',';
            newline(indent + 1);
            encodeInto(out, (*array)[i], indent + 1);
        }
        newline(indent);
        out += ']';
    } else if (const auto* dictionary = value.asDictionary()) {
        if (dictionary->empty()) {
            out += "{}";
            return;
        }
        out += '{';
        bool first = true;
        for (const auto& [key, member] : *dictionary) {
            if (!first)
                out += ',';
            first = false;
            newline(indent + 1);
            appendString(out, key);
            out += ": ";
            encodeInto(out, member, indent + 1);
        }
        newline(indent);
        out += '}';
    } else {
        out += "null";
    }
}

class Parser {
  public:
    explicit Parser(std::string_view text) : text_(text) {}

    std::optional<Value> document() {
        auto value = parseValue(0);
        skipSpace();
        if (!value || pos_ != text_.size())
            return std::nullopt;
        return value;
    }

  private:
    std::string_view text_;
    std::size_t pos_ = 0;

    void skipSpace() {
        while (pos_ < text_.size() && (text_[pos_] == ' ' || text_[pos_] == '\t' ||
                                       text_[pos_] == '\n' || text_[pos_] == '\r')) {
            ++pos_;
        }
    }

    bool consume(std::string_view word) {
        if (text_.substr(pos_, word.size()) != word)
            return false;
        pos_ += word.size();
        return true;
    }

    std::optional<Value> parseValue(int depth) {
        if (depth > maxDepth)
            return std::nullopt;
        skipSpace();
        if (pos_ >= text_.size())
            return std::nullopt;
        char c = text_[pos_];
        if (c == '{')
            return parseObject(depth);
        if (c == '[')
            return parseArray(depth);
        if (c == '"') {
            auto text = parseString();
            if (!text)
                return std::nullopt;
            return Value(std::move(*text));
        }
        if (consume("true"))
            return Value(true);
        if (consume("false"))
            return Value(false);
        if (consume("null"))
            return Value();
        return parseNumber();
    }

    // What follows a member or an element: a comma and another one, or the closing bracket.
    enum class Next { another, closed, malformed };
    Next afterItem(char close) {
        skipSpace();
        if (pos_ >= text_.size())
            return Next::malformed;
        const char c = text_[pos_++];
        if (c == ',')
            return Next::another;
        return c == close ? Next::closed : Next::malformed;
    }

    // An empty object or array: the closing bracket straight after the opening one.
    bool closesAtOnce(char close) {
        skipSpace();
        if (pos_ >= text_.size() || text_[pos_] != close)
            return false;
        ++pos_;
        return true;
    }

    std::optional<Value> parseObject(int depth) {
        ++pos_;  // '{'
        ValueDictionary members;
        if (closesAtOnce('}'))
            return Value(std::move(members));
        while (true) {
            skipSpace();
            if (pos_ >= text_.size() || text_[pos_] != '"')
                return std::nullopt;
            auto key = parseString();
            if (!key)
                return std::nullopt;
            skipSpace();
            if (pos_ >= text_.size() || text_[pos_] != ':')
                return std::nullopt;
            ++pos_;
            auto member = parseValue(depth + 1);
            if (!member)
                return std::nullopt;
            members[*key] = std::move(*member);  // a repeated key: the last one counts
            const Next next = afterItem('}');
            if (next == Next::malformed)
                return std::nullopt;
            if (next == Next::closed)
                return Value(std::move(members));
        }
    }

    std::optional<Value> parseArray(int depth) {
        ++pos_;  // '['
        ValueArray elements;
        if (closesAtOnce(']'))
            return Value(std::move(elements));
        while (true) {
            auto element = parseValue(depth + 1);
            if (!element)
                return std::nullopt;
            elements.push_back(std::move(*element));
            const Next next = afterItem(']');
            if (next == Next::malformed)
                return std::nullopt;
            if (next == Next::closed)
                return Value(std::move(elements));
        }
    }

    std::optional<unsigned> parseHex4() {
        if (pos_ + 4 > text_.size())
            return std::nullopt;
        unsigned code = 0;
        auto result = std::from_chars(text_.data() + pos_, text_.data() + pos_ + 4, code, 16);
        if (result.ec != std::errc() || result.ptr != text_.data() + pos_ + 4)
            return std::nullopt;
        pos_ += 4;
        return code;
    }

    static void appendUtf8(std::string& out, unsigned code) {
        if (code < 0x80) {
            out += static_cast<char>(code);
        } else if (code < 0x800) {
            out += static_cast<char>(0xC0 | (code >> 6));
            out += static_cast<char>(0x80 | (code & 0x3F));
        } else if (code < 0x10000) {
            out += static_cast<char>(0xE0 | (code >> 12));
            out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (code & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (code >> 18));
            out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (code & 0x3F));
        }
    }

    std::optional<std::string> parseString() {
        ++pos_;  // '"'
        std::string out;
        while (pos_ < text_.size()) {
            char c = text_[pos_++];
            if (c == '"')
                return out;
            if (static_cast<unsigned char>(c) < 0x20)
                return std::nullopt;
            if (c != '\\') {
                out += c;
                continue;
            }
            if (pos_ >= text_.size())
                return std::nullopt;
            char escape = text_[pos_++];
            switch (escape) {
                case '"':
                    out += '"';
                    break;
                case '\\':
                    out += '\\';
                    break;
                case '/':
                    out += '/';
                    break;
                case 'b':
                    out += '\b';
                    break;
                case 'f':
                    out += '\f';
                    break;
                case 'n':
                    out += '\n';
                    break;
                case 'r':
                    out += '\r';
                    break;
                case 't':
                    out += '\t';
                    break;
                case 'u': {
                    auto code = parseHex4();
                    if (!code)
                        return std::nullopt;
                    if (*code >= 0xD800 && *code < 0xDC00) {
                        // A high surrogate must be followed by its low half.
                        if (!consume("\\u"))
                            return std::nullopt;
                        auto low = parseHex4();
                        if (!low || *low < 0xDC00 || *low > 0xDFFF)
                            return std::nullopt;
                        *code = 0x10000 + ((*code - 0xD800) << 10) + (*low - 0xDC00);
                    } else if (*code >= 0xDC00 && *code <= 0xDFFF) {
                        return std::nullopt;
                    }
                    appendUtf8(out, *code);
                    break;
                }
                default:
                    return std::nullopt;
            }
        }
        return std::nullopt;
    }

    std::optional<Value> parseNumber() {
        std::size_t start = pos_;
        if (pos_ < text_.size() && text_[pos_] == '-')
            ++pos_;
        std::size_t digits = pos_;
        while (pos_ < text_.size() && text_[pos_] >= '0' && text_[pos_] <= '9')
            ++pos_;
        if (pos_ == digits)
            return std::nullopt;
        if (text_[digits] == '0' && pos_ - digits > 1)
            return std::nullopt;  // no leading zeros
        bool real = false;
        if (pos_ < text_.size() && text_[pos_] == '.') {
            real = true;
            std::size_t fraction = ++pos_;
            while (pos_ < text_.size() && text_[pos_] >= '0' && text_[pos_] <= '9')
                ++pos_;
            if (pos_ == fraction)
                return std::nullopt;
        }
        if (pos_ < text_.size() && (text_[pos_] == 'e' || text_[pos_] == 'E')) {
            real = true;
            ++pos_;
            if (pos_ < text_.size() && (text_[pos_] == '+' || text_[pos_] == '-'))
                ++pos_;
            std::size_t exponent = pos_;
            while (pos_ < text_.size() && text_[pos_] >= '0' && text_[pos_] <= '9')
                ++pos_;
            if (pos_ == exponent)
                return std::nullopt;
        }
        const char* first = text_.data() + start;
        const char* last = text_.data() + pos_;
        if (!real) {
            std::int64_t integer = 0;
            auto result = std::from_chars(first, last, integer);
            if (result.ec == std::errc() && result.ptr == last)
                return Value(integer);
            // Too large for an integer: keep it as a floating-point number.
        }
        double number = 0;
        auto result = std::from_chars(first, last, number);
        if (result.ptr != last)
            return std::nullopt;
        if (result.ec == std::errc::result_out_of_range)
            return std::nullopt;
        return Value(number);
    }
};

}  // namespace

std::string encode(const Value& value) {
    std::string out;
    encodeInto(out, value, 0);
    out += '\n';
    return out;
}

std::optional<Value> decode(std::string_view text) {
    // A byte-order mark some editors leave at the start.
    if (text.substr(0, 3) == "\xEF\xBB\xBF")
        text.remove_prefix(3);
    return Parser(text).document();
}

}  // namespace zd::JsonValueCodec
