#pragma once

#include <string>

namespace bouncecheck {

/// `text` with every line end, be it LF, CRLF or a bare CR, as CRLF: the form
/// that a message has on the wire, whatever kind of file it was stored in.
/// A text that has it already is handed back without a copy.
std::string withCrLf(std::string text);

}  // namespace bouncecheck
