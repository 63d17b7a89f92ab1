#pragma once

#include <string>
#include <string_view>

#include "reasons/ReplyText.h"

namespace bouncecheck {

/// The lines of `text` that the bytes of `words` stand in, with those around them up to a blank
/// line, for people to read: without indents, LF at the end of each. Of a long paragraph,
/// `mostSaid` bytes on each side of the words; all that is read for it.
std::string linesAround(std::string_view text, TextPart words);

}  // namespace bouncecheck
