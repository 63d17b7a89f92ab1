#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace bouncecheck {

/// The line end of mail on the wire (RFC 5322, section 2.1).
inline constexpr std::string_view crLf = "\r\n";

/// The first CRLF at or after `from`, or npos. Faster than a search for two bytes.
inline std::size_t findCrLf(std::string_view text, std::size_t from = 0) noexcept {
    for (std::size_t at = from; (at = text.find('\n', at)) != std::string_view::npos; ++at) {
        if (at > from && text[at - 1] == '\r') return at - 1;
    }
    return std::string_view::npos;
}

/// `text` with every line end, be it LF, CRLF or a bare CR, as CRLF: the form
/// that a message has on the wire, whatever kind of file it was stored in.
/// Ends before a line end that would be one too many (`limits::lineEnds`). A long text is
/// completed in its own storage where that has room, or handed back where it is complete.
std::string withCrLf(std::string text);
/// A copy in that form.
std::string copyWithCrLf(std::string_view text);

}  // namespace bouncecheck
