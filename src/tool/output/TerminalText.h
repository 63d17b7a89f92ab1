#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

namespace bouncecheck {

/// `text` as well-formed UTF-8, control characters as escapes (text/Controls.h):
/// nothing from a message breaks a line, steers a terminal or reorders what stands in it.
std::string printable(std::string_view text);
/// Writes the same a few KB at a time.
void writePrintable(std::ostream& out, std::string_view text);

/// How many columns of a terminal `text` (UTF-8) takes.
std::size_t columns(std::string_view text) noexcept;

/// How many bytes at the start of `text` fill at most `width` columns; it ends with a
/// whole character.
std::size_t bytesWithin(std::string_view text, std::size_t width) noexcept;

enum class Cut { end, front };

/// `text`, printable already, in at most `width` columns; U+2026 stands for what had
/// to go.
std::string fitted(std::string_view text, std::size_t width, Cut cut = Cut::end);

/// Whether and how wide the output is decorated.
struct Style {
    bool color = false;
    /// Columns of the terminal; 0 when lines may be of any length.
    std::size_t width = 0;

    /// `text` in a colour: the parameters of a SGR sequence (ECMA-48), such as "31".
    std::string paint(std::string_view text, std::string_view sgr) const;
};

/// The colour of a verdict, for `paint`.
std::string_view colorOf(int type) noexcept;

}  // namespace bouncecheck
