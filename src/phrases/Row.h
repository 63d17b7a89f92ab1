#pragma once

#include <string_view>

#include "text/Search.h"

namespace bouncecheck::phrases {

/// How a row is sought.
struct RowKind {
    LetterCase letters = LetterCase::ignored;
    /// Whether finding the phrase only raises a question that is answered elsewhere:
    /// the phrase is the longest piece of a pattern, say.
    bool isHint = false;
};

/// One row of what a pass looks for. Several rows may hold the same phrase.
struct Row {
    std::string_view text;
    RowKind kind;
};

}  // namespace bouncecheck::phrases
