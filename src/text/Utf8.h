#pragma once

#include <cstddef>
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

/// The start of `text` of at most `most` bytes that ends with a whole character;
/// exactly `most` bytes of a text that is no UTF-8.
std::string_view wholeCharacters(std::string_view text, std::size_t most) noexcept;

/// Whether `text` is well-formed UTF-8 of one character.
bool isOneCharacter(std::string_view text) noexcept;

/// The code point of `character`, which is one.
std::uint32_t codePointOf(std::string_view character) noexcept;

/// How many bytes at the start of `text` are below 128.
std::size_t asciiPrefix(std::string_view text) noexcept;

/// Whether all bytes of `text` are below 128, and none is an LF.
bool isAsciiLine(std::string_view text) noexcept;

/// Appends `text` with each ill-formed stretch replaced by U+FFFD. Ends before the
/// stretch that would make it longer than `text` by more than `mostGrowth` bytes.
void appendWellFormed(std::string& out, std::string_view text,
                      std::size_t mostGrowth = std::string_view::npos);

/// Calls `take` with what `appendWellFormed` makes of `text`, a few KB at a time, so
/// that a text of megabytes is not in memory twice. A piece ends with a whole
/// character, and is valid until `take` returns.
template <class Take>
void takeWellFormed(std::string_view text, Take take) {
    constexpr std::size_t pieceBytes = 16384;
    std::string wellFormed;
    while (!text.empty()) {
        const std::string_view piece = wholeCharacters(text, pieceBytes);
        text.remove_prefix(piece.size());
        if (isUtf8(piece)) {
            take(piece);
            continue;
        }
        wellFormed.clear();
        appendWellFormed(wellFormed, piece);
        take(std::string_view(wellFormed));
    }
}

/// U+FFFD, the mark of a byte that could not be decoded.
inline constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

}  // namespace bouncecheck
