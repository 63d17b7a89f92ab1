#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

/// Byte classes and comparisons that know ASCII only, whatever the locale.
///
/// Mail protocols fold the case of ASCII letters alone, so bytes above 127
/// always compare as they are and UTF-8 text passes through unharmed.
namespace bouncecheck::ascii {

constexpr char toLower(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr char toUpper(char c) noexcept {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr bool isDigit(char c) noexcept { return c >= '0' && c <= '9'; }

constexpr bool isAlpha(char c) noexcept {
    const char lower = toLower(c);
    return lower >= 'a' && lower <= 'z';
}

constexpr bool isAlnum(char c) noexcept { return isAlpha(c) || isDigit(c); }
/// For sets of a few bytes, where calling memchr takes longer than looking.
constexpr bool isOneOf(char c, std::string_view set) noexcept {
    for (const char other : set) {
        if (c == other) return true;
    }
    return false;
}

/// White space inside a line: blank and tab, the WSP of RFC 5234.
constexpr bool isBlank(char c) noexcept { return c == ' ' || c == '\t'; }

/// Blank, tab, CR, LF, vertical tab and form feed.
constexpr bool isSpace(char c) noexcept { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// Control characters, DEL included.
constexpr bool isControl(char c) noexcept {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

constexpr bool isAscii(char c) noexcept { return static_cast<unsigned char>(c) < 0x80; }

/// The value of a hexadecimal digit in either case, or -1.
constexpr int hexValue(char c) noexcept {
    if (isDigit(c)) return c - '0';
    const char lower = toLower(c);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// A constant goes second: the loops go by its size, so that compilers see that they stay
/// inside it.
constexpr bool equalsNoCase(std::string_view a, std::string_view b) noexcept {
    if (a.size() != b.size()) return false;
    if (!std::is_constant_evaluated()) {
        // Eight bytes at once show everything except whether those which differ by the bit
        // of letter case are letters.
        std::uint64_t left;
        std::uint64_t right;
        while (b.size() >= sizeof right) {
            std::memcpy(&left, a.data(), sizeof left);
            std::memcpy(&right, b.data(), sizeof right);
            if (left != right) {
                if (((left ^ right) & ~std::uint64_t{0x2020202020202020}) != 0) return false;
                for (std::size_t i = 0; i < sizeof left; ++i) {
                    if (toLower(a[i]) != toLower(b[i])) return false;
                }
            }
            a.remove_prefix(sizeof left);
            b.remove_prefix(sizeof right);
        }
    }
    for (std::size_t i = 0; i < b.size(); ++i) {
        if (toLower(a[i]) != toLower(b[i])) return false;
    }
    return true;
}

constexpr bool startsWithNoCase(std::string_view text, std::string_view prefix) noexcept {
    return text.size() >= prefix.size() && equalsNoCase(text.substr(0, prefix.size()), prefix);
}

constexpr std::string_view trimRight(std::string_view text) noexcept {
    while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
    return text;
}

constexpr std::string_view trimLeft(std::string_view text) noexcept {
    while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
    return text;
}

/// `text` without the white space at both ends.
constexpr std::string_view trim(std::string_view text) noexcept {
    return trimLeft(trimRight(text));
}

inline std::string lowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) c = toLower(c);
    return lower;
}

/// A C string as a view; null reads as the empty text.
constexpr std::string_view viewOf(const char* s) noexcept {
    return s ? std::string_view(s) : std::string_view();
}

}  // namespace bouncecheck::ascii
