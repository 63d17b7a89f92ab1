#pragma once

#include <span>

#include "bounce/BounceRule.h"

namespace bouncecheck {

/// A table of phrases, patterns or markers, in the order of its search and
/// without its terminator.
struct PhraseTable {
    const char* name;
    std::span<const char* const> phrases;
};

/// All tables of phrases, for programs that show what is known.
std::span<const PhraseTable> phraseTables() noexcept;

/// The rule table, without its terminator.
std::span<const BounceRule> ruleTable() noexcept;

}  // namespace bouncecheck
