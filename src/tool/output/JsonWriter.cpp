#include "tool/output/JsonWriter.h"

#include <ostream>

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

void JsonWriter::name(std::string_view text) {
    string(text);
    text_ += ':';
    needsComma_ = false;
}

void JsonWriter::string(std::string_view text) {
    constexpr std::size_t mostInMemory = 65536;
    separate();
    text_ += '"';
    takeWellFormed(text, [&](std::string_view piece) {
        appendText(text_, piece);
        if (text_.size() >= mostInMemory) flush();
    });
    text_ += '"';
    needsComma_ = true;
}

void JsonWriter::endLine() {
    text_ += '\n';
    needsComma_ = false;
    flush();
    isPartlyOut_ = false;
}

void JsonWriter::abandonLine() {
    text_.clear();
    needsComma_ = false;
    if (isPartlyOut_) out_ << '\n';
    isPartlyOut_ = false;
}

void JsonWriter::flush() {
    out_ << text_;
    isPartlyOut_ = true;
    text_.clear();
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
