#pragma once

#include <string>
#include <string_view>

namespace bouncecheck {

/// The line end of mail on the wire (RFC 5322, section 2.1).
inline constexpr std::string_view crLf = "\r\n";

/// `text` with every line end, be it LF, CRLF or a bare CR, as CRLF: the form
/// that a message has on the wire, whatever kind of file it was stored in.
/// A text that has it already is handed back without a copy.
std::string withCrLf(std::string text);

}  // namespace bouncecheck
