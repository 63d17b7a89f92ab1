#include "mime/TransferEncoding.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "mime/LineEnds.h"
#include "mime/NextCrLf.h"
#include "text/Ascii.h"
#include "text/HexEscapes.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

constexpr std::array<signed char, 256> base64Table = [] {
    std::array<signed char, 256> table{};
    table.fill(-1);
    constexpr std::string_view digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (std::size_t i = 0; i < digits.size(); ++i) {
        table[static_cast<unsigned char>(digits[i])] = static_cast<signed char>(i);
    }
    return table;
}();

/// Calls `onLine` with each line of a text with CRLF line ends, without them.
template <class OnLine>
void forEachLine(std::string_view text, OnLine onLine) {
    NextCrLf ends(text);
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = ends.atOrAfter(start);
        onLine(text.substr(start, end - start), end != npos);
        start = end == npos ? text.size() : end + crLf.size();
    }
}

std::string decodeQuotedPrintable(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    forEachLine(text, [&](std::string_view line, bool ended) {
        // Blanks at the end of a line came in on the way (RFC 2045, 6.7, rule 3).
        while (!line.empty() && ascii::isBlank(line.back())) line.remove_suffix(1);
        const bool softBreak = line.ends_with('=');
        if (softBreak) line.remove_suffix(1);
        appendHexDecoded(out, line, '=');
        if (ended && !softBreak) out += crLf;
    });
    return out;
}

void appendUuLine(std::string& out, std::string_view line) {
    const auto value = [&](std::size_t i) -> unsigned {
        return i < line.size() ? (static_cast<unsigned char>(line[i]) - 0x20u) & 0x3F : 0;
    };
    // The count leads the line. Blanks, which are zeros, are often lost at its
    // end, but a count is not believed beyond the group that the line ends in.
    const std::size_t groups = (line.size() + 2) / 4;
    const std::size_t count = std::min<std::size_t>(value(0), 3 * groups);
    for (std::size_t done = 0, digit = 1; done < count; done += 3, digit += 4) {
        const unsigned bits =
            value(digit) << 18 | value(digit + 1) << 12 | value(digit + 2) << 6 | value(digit + 3);
        const char bytes[] = {static_cast<char>(bits >> 16 & 0xFF),
                              static_cast<char>(bits >> 8 & 0xFF), static_cast<char>(bits & 0xFF)};
        out.append(bytes, std::min<std::size_t>(3, count - done));
    }
}

std::string decodeUuencode(std::string_view text) {
    std::string out;
    bool inside = false;
    forEachLine(text, [&](std::string_view line, bool) {
        if (!inside) {
            inside = line.starts_with("begin ");
        } else if (ascii::trimRight(line) == "end") {
            inside = false;
        } else if (!line.empty()) {
            appendUuLine(out, line);
        }
    });
    return out;
}

}  // namespace

int base64Value(char c) noexcept { return base64Table[static_cast<unsigned char>(c)]; }

std::string decodeBase64(std::string_view text) {
    std::string out;
    out.reserve(text.size() / 4 * 3 + 3);
    std::uint32_t bits = 0;
    unsigned digits = 0;
    const auto flush = [&] {
        // Two digits hold one byte, three hold two; a lone digit holds none.
        if (digits == 2) out += static_cast<char>(bits >> 4);
        if (digits == 3) {
            out += static_cast<char>(bits >> 10);
            out += static_cast<char>(bits >> 2 & 0xFF);
        }
        bits = 0;
        digits = 0;
    };
    for (const char c : text) {
        const int value = base64Value(c);
        if (value < 0) {
            if (c == '=') flush();
            continue;
        }
        bits = bits << 6 | static_cast<std::uint32_t>(value);
        if (++digits == 4) {
            out += static_cast<char>(bits >> 16 & 0xFF);
            out += static_cast<char>(bits >> 8 & 0xFF);
            out += static_cast<char>(bits & 0xFF);
            bits = 0;
            digits = 0;
        }
    }
    flush();
    return out;
}

TransferEncoding transferEncoding(std::string_view fieldValue) noexcept {
    const std::string_view value = ascii::trim(fieldValue);
    const std::string_view name = value.substr(0, value.find_first_of(" \t;("));
    const auto is = [&](std::string_view other) { return ascii::equalsNoCase(name, other); };
    if (is("quoted-printable")) return TransferEncoding::quotedPrintable;
    if (is("base64")) return TransferEncoding::base64;
    if (is("x-uuencode") || is("uuencode") || is("x-uue")) return TransferEncoding::uuencode;
    return TransferEncoding::identity;
}

std::string decodeTransfer(std::string_view text, TransferEncoding encoding) {
    switch (encoding) {
        case TransferEncoding::quotedPrintable: return decodeQuotedPrintable(text);
        case TransferEncoding::base64: return decodeBase64(text);
        case TransferEncoding::uuencode: return decodeUuencode(text);
        case TransferEncoding::identity: break;
    }
    return std::string(text);
}

}  // namespace bouncecheck
