#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace bouncecheck {

/// A character in a text that terminals, editors and browsers obey instead of
/// showing it.
struct ControlCharacter {
    /// Its first byte; npos when there is none.
    std::size_t at = std::string_view::npos;
    /// In bytes.
    std::size_t size = 0;
    std::uint32_t codePoint = 0;
};

/// The first control character of `text` (UTF-8): C0, DEL and C1 (ECMA-48), the line
/// and paragraph separators U+2028 and U+2029, and those that reorder what stands
/// behind them: U+202A to U+202E and U+2066 to U+2069 (UAX #9). The marks U+061C,
/// U+200E and U+200F are none: they do what any letter of their direction does. In
/// ill-formed text, bytes that form no character are none either.
ControlCharacter findControl(std::string_view text) noexcept;

/// Calls `plain` with each stretch of `text` without control characters and
/// `control` with each of them and its bytes, in order.
template <class Plain, class Control>
void splitAtControls(std::string_view text, Plain plain, Control control) {
    while (!text.empty()) {
        const ControlCharacter found = findControl(text);
        if (found.at == std::string_view::npos) return plain(text);
        if (found.at > 0) plain(text.substr(0, found.at));
        control(found.codePoint, text.substr(found.at, found.size));
        text.remove_prefix(found.at + found.size);
    }
}

/// Appends `prefix` and the last `digits` hexadecimal digits of `number`, at most 8, with
/// the sixteen characters of `alphabet`.
void appendHex(std::string& out, std::string_view prefix, std::uint32_t number, int digits,
               std::string_view alphabet = "0123456789ABCDEF");

/// `text` with control characters as escapes: \n, \t, \r, \x1B, \u202E.
std::string escapeControls(std::string_view text);

}  // namespace bouncecheck
