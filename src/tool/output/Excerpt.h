#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tool/Classify.h"

namespace bouncecheck {

/// What is marked in an excerpt, as bits: the phrase that decided and the address of the verdict,
/// and of each of the first recipients the address and the words that gave the reason.
using Marked = std::uint32_t;
inline constexpr Marked markedPhrase = 1;
inline constexpr Marked markedAddress = 2;
/// How many recipients have bits.
inline constexpr std::size_t mostMarkedRecipients = 15;
constexpr Marked markedRecipient(std::size_t index) noexcept { return Marked{4} << (2 * index); }
constexpr Marked markedQuote(std::size_t index) noexcept { return Marked{8} << (2 * index); }

/// Part of a line, in bytes.
struct Mark {
    std::size_t begin = 0;
    std::size_t size = 0;
    Marked what = 0;
};

/// A line of an excerpt; a view into the text.
struct ExcerptLine {
    /// Without its line end.
    std::string_view text = {};
    /// In order and apart from each other; none is empty.
    std::vector<Mark> marks = {};
    /// Stands for the lines that are left out here; has no text.
    bool isGap = false;
};

/// The phrase that decided, with the text that it stands in where that is not the text
/// decided upon; "" when no phrase has decided.
std::string phraseWithPlace(const Match& match);

/// The lines of the text decided upon in which the phrase that decided, the address and the
/// evidence about recipients stand, and two around each; the first dozen when none of it stands
/// there. Linear in the size of the text.
std::vector<ExcerptLine> excerptOf(const Classified& message);

/// `line` in at most `mostBytes`: what is marked first stays in sight, and no
/// character is torn.
ExcerptLine cutLine(ExcerptLine line, std::size_t mostBytes);

}  // namespace bouncecheck
