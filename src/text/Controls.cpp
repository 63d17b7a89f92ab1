#include "text/Controls.h"

#include <array>
#include <cstdint>
#include <cstring>

#include "text/Ascii.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

/// The first bytes in UTF-8 of the control characters above U+007F.
constexpr char leadOfHighControls = '\xC2';
constexpr char leadOfSeparators = '\xE2';

constexpr bool reordersOrSeparates(std::uint32_t code) noexcept {
    return (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

/// How many bytes at the start of `text` are printable ASCII for certain, eight at a time.
std::size_t printablePrefix(std::string_view text) noexcept {
    constexpr std::uint64_t ones = 0x0101010101010101u;
    std::size_t at = 0;
    for (; at + sizeof ones <= text.size(); at += sizeof ones) {
        std::uint64_t bytes;
        std::memcpy(&bytes, text.data() + at, sizeof bytes);
        // The highest bit of a byte is set in one of these where the byte is not from " " to "~".
        if (((bytes | (bytes + ones) | (bytes - ones * ' ')) & ones * 0x80) != 0) break;
    }
    return at;
}

}  // namespace

ControlCharacter findControl(std::string_view text) noexcept {
    for (std::size_t at = printablePrefix(text); at < text.size(); ++at) {
        const char c = text[at];
        if (ascii::isControl(c)) return {at, 1, static_cast<unsigned char>(c)};
        if (c != leadOfHighControls && c != leadOfSeparators) continue;
        const std::size_t size = c == leadOfHighControls ? 2 : 3;
        const std::string_view character = text.substr(at, size);
        if (!isOneCharacter(character)) continue;
        const std::uint32_t code = codePointOf(character);
        if (code < 0xA0 || reordersOrSeparates(code)) return {at, size, code};
    }
    return {};
}

void appendHex(std::string& out, std::string_view prefix, std::uint32_t number, int digits,
               std::string_view alphabet) {
    std::array<char, 8> hex;
    std::size_t size = 0;
    while (digits-- > 0) hex[size++] = alphabet[number >> (4 * digits) & 15];
    out.append(prefix).append(hex.data(), size);
}

std::string escapeControls(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    splitAtControls(
        text, [&](std::string_view plain) { out += plain; },
        [&](std::uint32_t code, std::string_view) {
            switch (code) {
                case '\n': out += "\\n"; break;
                case '\r': out += "\\r"; break;
                case '\t': out += "\\t"; break;
                default:
                    if (code < 0x100) {
                        appendHex(out, "\\x", code, 2);
                    } else {
                        appendHex(out, "\\u", code, 4);
                    }
            }
        });
    return out;
}

}  // namespace bouncecheck
