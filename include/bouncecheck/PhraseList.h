#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include <bouncecheck/Export.h>
#include <bouncecheck/LetterCase.h>

namespace bouncecheck {

/// What the rows of a list are.
enum class ListKind {
    /// Phrases that stand somewhere in a text.
    phrases,
    /// Forms of a whole text, in which '*' stands for anything.
    patterns,
    /// What stands before a failed address. "[context]" in front: the text must hold the context;
    /// "[[context]": only what is behind it counts.
    markers,
};

/// A table of phrases, in the order of its search and without its terminator.
struct PhraseList {
    std::string_view name;
    std::span<const char* const> rows;
    ListKind kind = ListKind::phrases;
    LetterCase letters = LetterCase::ignored;
    /// Whether a search goes on through the rows of the next list.
    bool runsOn = false;
};

/// All lists, for programs that show what is known.
BOUNCECHECK_EXPORT std::span<const PhraseList> allPhraseLists() noexcept;

}  // namespace bouncecheck
