#pragma once

#include <string_view>

#include "text/Search.h"

namespace bouncecheck {

/// Whether the whole of `text` matches `pattern`, in which '*' stands for any
/// run of bytes, the empty one included, and every other byte for itself.
/// Linear in text plus pattern.
bool wildcardMatch(std::string_view text, std::string_view pattern, LetterCase letters);

}  // namespace bouncecheck
