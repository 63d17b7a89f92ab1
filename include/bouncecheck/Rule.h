#pragma once

#include <array>
#include <span>
#include <string_view>

#include <bouncecheck/BounceType.h>
#include <bouncecheck/Export.h>

namespace bouncecheck {

/// A rule that decides: what it logs, and what it means to people.
struct Rule {
    BounceType type;
    /// The line that names it in the log; ends in the label.
    const char* line;
    /// What a verdict by this rule says about the message.
    std::string_view meaning;
    /// What has to hold for the rule to decide.
    std::string_view looksFor;
    /// What to do about it; "" when the advice for the type says all.
    std::string_view advice;
    /// The lists whose phrases it looks for; "" where there are fewer.
    std::array<std::string_view, 3> lists = {};

    /// "2.3" for "Bounce type 2.3", "6.481" for "Bounce type: 6.481".
    constexpr std::string_view label() const noexcept {
        const std::string_view words = line;
        return words.substr(words.rfind(' ') + 1);
    }
};

/// All rules, in the order in which docs/verdicts.md explains them.
BOUNCECHECK_EXPORT std::span<const Rule> allRules() noexcept;
/// The rule of a label; null when there is none.
BOUNCECHECK_EXPORT const Rule* ruleOf(std::string_view label) noexcept;

/// What to do about a verdict of a type, by a rule or by none; "" for a number that is no
/// bounce type.
BOUNCECHECK_EXPORT std::string_view adviceFor(int type, const Rule* rule) noexcept;

}  // namespace bouncecheck
