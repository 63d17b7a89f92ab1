#include "tool/output/JsonText.h"

#include <cstdint>

#include "text/Controls.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

constexpr std::string_view hexDigits = "0123456789abcdef";

void appendEscape(std::string& out, std::uint32_t code) {
    switch (code) {
        case '\b': out += "\\b"; break;
        case '\f': out += "\\f"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        default: appendHex(out, "\\u", code, 4, hexDigits);
    }
}

/// Appends `text` with a backslash before each quote and backslash.
void appendPlain(std::string& out, std::string_view text) {
    std::size_t copied = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '"' && text[i] != '\\') continue;
        out.append(text.substr(copied, i - copied)).append({'\\', text[i]});
        copied = i + 1;
    }
    out += text.substr(copied);
}

void appendText(std::string& out, std::string_view text) {
    splitAtControls(
        text, [&](std::string_view plain) { appendPlain(out, plain); },
        [&](std::uint32_t code, std::string_view) { appendEscape(out, code); });
}

}  // namespace

void appendJsonString(std::string& json, std::string_view text) {
    json += '"';
    takeWellFormed(text, [&](std::string_view piece) { appendText(json, piece); });
    json += '"';
}

void JsonText::name(std::string_view text) {
    string(text);
    text_ += ':';
    needsComma_ = false;
}

void JsonText::string(std::string_view text) {
    separate();
    text_ += '"';
    takeWellFormed(text, [&](std::string_view piece) {
        appendText(text_, piece);
        grown();
    });
    text_ += '"';
    needsComma_ = true;
}

void JsonText::begin(char bracket) {
    separate();
    text_ += bracket;
    needsComma_ = false;
}

void JsonText::end(char bracket) {
    text_ += bracket;
    needsComma_ = true;
}

void JsonText::literal(std::string_view text) {
    separate();
    text_ += text;
    needsComma_ = true;
}

void JsonText::separate() {
    if (needsComma_) text_ += ',';
}

}  // namespace bouncecheck
