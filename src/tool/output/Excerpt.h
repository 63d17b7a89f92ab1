#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

#include "tool/Classify.h"

namespace bouncecheck {

/// Part of a line, in bytes.
struct Mark {
    std::size_t begin = 0;
    std::size_t size = 0;
};

/// A line of an excerpt; a view into the text.
struct ExcerptLine {
    /// Without its line end.
    std::string_view text = {};
    /// In order and apart from each other; a size of 0 stands for none.
    std::array<Mark, 2> marks = {};
    /// Stands for the lines that are left out here; has no text.
    bool isGap = false;
};

/// The phrase that decided: the one that the rule says it found, else the first of
/// its tables that stands in the text or in the subject; "" when there is none.
std::string_view phraseBehind(const Classified& message);

/// The lines of the text decided upon in which the phrase and the address first
/// stand, and two around each; the first dozen when neither stands in it. Linear in
/// the size of the text.
std::vector<ExcerptLine> excerptOf(const Classified& message, std::string_view phrase);

/// `line` in at most `mostBytes`: what is marked first stays in sight, and no
/// character is torn.
ExcerptLine cutLine(ExcerptLine line, std::size_t mostBytes);

}  // namespace bouncecheck
