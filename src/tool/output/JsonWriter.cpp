#include "tool/output/JsonWriter.h"

#include "text/Utf8.h"

namespace bouncecheck {
namespace {

constexpr bool isEscaped(char c) noexcept {
    return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\';
}

void appendEscape(std::string& out, char c) {
    constexpr std::string_view digits = "0123456789abcdef";
    switch (c) {
        case '"': out += "\\\""; break;
        case '\\': out += "\\\\"; break;
        case '\b': out += "\\b"; break;
        case '\f': out += "\\f"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        default:
            out += "\\u00";
            out += {digits[static_cast<unsigned char>(c) >> 4],
                    digits[static_cast<unsigned char>(c) & 15]};
    }
}

/// Appends `text`, which is UTF-8, between quotes.
void appendQuoted(std::string& out, std::string_view text) {
    out += '"';
    std::size_t copied = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!isEscaped(text[i])) continue;
        out += text.substr(copied, i - copied);
        appendEscape(out, text[i]);
        copied = i + 1;
    }
    out += text.substr(copied);
    out += '"';
}

}  // namespace

void JsonWriter::name(std::string_view text) {
    string(text);
    text_ += ':';
    needsComma_ = false;
}

void JsonWriter::string(std::string_view text) {
    separate();
    if (isUtf8(text)) {
        appendQuoted(text_, text);
    } else {
        std::string wellFormed;
        appendWellFormed(wellFormed, text);
        appendQuoted(text_, wellFormed);
    }
    needsComma_ = true;
}

void JsonWriter::clear() noexcept {
    text_.clear();
    needsComma_ = false;
}

void JsonWriter::begin(char bracket) {
    separate();
    text_ += bracket;
    needsComma_ = false;
}

void JsonWriter::end(char bracket) {
    text_ += bracket;
    needsComma_ = true;
}

void JsonWriter::literal(std::string_view text) {
    separate();
    text_ += text;
    needsComma_ = true;
}

void JsonWriter::separate() {
    if (needsComma_) text_ += ',';
}

}  // namespace bouncecheck
