#pragma once

#include <string_view>

#include "text/Search.h"

namespace bouncecheck::phrases {

/// One row of what a pass looks for. Several rows may hold the same phrase.
struct Row {
    std::string_view text;
    LetterCase letters = LetterCase::ignored;
    /// Whether finding the phrase only raises a question that is answered elsewhere:
    /// the phrase is the longest piece of a pattern, say.
    bool isHint = false;
};

}  // namespace bouncecheck::phrases
