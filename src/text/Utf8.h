#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace bouncecheck {

/// Whether `text` is well-formed UTF-8 (RFC 3629: no overlong forms, no
/// surrogates, nothing above U+10FFFF). Plain ASCII is.
bool isUtf8(std::string_view text) noexcept;

/// Appends the UTF-8 form of `codePoint`; U+FFFD where it is none.
void appendUtf8(std::string& out, std::uint32_t codePoint);

/// Whether `c` is within a character rather than its first byte.
constexpr bool continuesCharacter(char c) noexcept {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

/// How many bytes at the start of `text` are below 128.
std::size_t asciiPrefix(std::string_view text) noexcept;

/// Appends `text` with each ill-formed stretch replaced by U+FFFD.
void appendWellFormed(std::string& out, std::string_view text);

/// U+FFFD, the mark of a byte that could not be decoded.
inline constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

}  // namespace bouncecheck
