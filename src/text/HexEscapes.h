#pragma once

#include <string>
#include <string_view>

namespace bouncecheck {

/// Appends `text` with each `mark` and the two hexadecimal digits behind it replaced by
/// the byte that they stand for: "=41" or "%41". A `mark` without them stays.
void appendHexDecoded(std::string& out, std::string_view text, char mark);

}  // namespace bouncecheck
