#pragma once

#include <cstddef>
#include <string_view>

#include "text/Ascii.h"

/// What the codes of replies look like, whatever stands in front of them.
namespace bouncecheck {

/// How many bytes an enhanced status code has that begins at `at` (RFC 3463, section 2);
/// 0 where none does. Its subject is one of those that are registered.
constexpr std::size_t statusLength(std::string_view text, std::size_t at) noexcept {
    const auto digitsAt = [&](std::size_t from) {
        std::size_t end = from;
        while (end < text.size() && ascii::isDigit(text[end]) && end - from < 4) ++end;
        return end - from;
    };
    if (at + 5 > text.size() || !ascii::isOneOf(text[at], "245") || text[at + 1] != '.') return 0;
    if (text[at + 2] < '0' || text[at + 2] > '7' || text[at + 3] != '.') return 0;
    const std::size_t detail = digitsAt(at + 4);
    if (detail == 0 || detail > 3) return 0;
    const std::size_t end = at + 4 + detail;
    if (end < text.size()) {
        const char next = text[end];
        const bool goesOn = end + 1 < text.size() && ascii::isDigit(text[end + 1]);
        if (ascii::isAlnum(next) || next == '_' || next == '@') return 0;
        if (goesOn && (next == '.' || next == '-')) return 0;
    }
    return 4 + detail;
}

/// Whether the start of `text` looks like the address of a host: "192.0.2.1".
constexpr bool beginsWithHostAddress(std::string_view text) noexcept {
    int points = 0;
    std::size_t digits = 0;
    for (const char c : text.substr(0, 15)) {
        if (ascii::isDigit(c)) {
            ++digits;
        } else if (c == '.' && digits > 0 && digits < 4 && points < 3) {
            ++points;
            digits = 0;
        } else {
            break;
        }
    }
    return points == 3 && digits > 0 && digits < 4;
}

/// The same of a reply code (RFC 5321, section 4.2).
constexpr std::size_t replyCodeLength(std::string_view text, std::size_t at) noexcept {
    constexpr std::size_t length = 3;
    if (at + length > text.size() || !ascii::isOneOf(text[at], "245")) return 0;
    if (text[at + 1] < '0' || text[at + 1] > '7' || !ascii::isDigit(text[at + 2])) return 0;
    const std::size_t end = at + length;
    if (end == text.size()) return length;
    const char next = text[end];
    if (ascii::isAlnum(next) || ascii::isOneOf(next, "_@/%") || !ascii::isAscii(next)) return 0;
    if (end + 1 < text.size() && ascii::isDigit(text[end + 1])) {
        if (ascii::isOneOf(next, ".,")) return 0;
        const bool mayFollow =
            statusLength(text, end + 1) > 0 || beginsWithHostAddress(text.substr(end + 1));
        if (next == '-' && !mayFollow) return 0;
    }
    return length;
}

/// Whether `line` begins with the reply code of a failure, and has words behind it.
constexpr bool beginsWithFailure(std::string_view line) noexcept {
    return line.size() > 4 && ascii::isOneOf(line[0], "45") && ascii::isOneOf(line[3], " -") &&
           replyCodeLength(line, 0) > 0;
}

}  // namespace bouncecheck
