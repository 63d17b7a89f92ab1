#pragma once

#include <array>
#include <span>
#include <string_view>

#include "bounce/BounceType.h"

namespace bouncecheck {

/// What a verdict means to the sender of the original message.
struct TypeHelp {
    BounceType type;
    std::string_view meaning;
    /// What to do about it.
    std::string_view advice;
};

/// What stands behind the label of a rule.
struct RuleHelp {
    std::string_view label;
    BounceType type;
    std::string_view meaning;
    /// What has to hold for the rule to decide.
    std::string_view looksFor;
    /// What to do about it; "" when the advice for the type says all.
    std::string_view advice;
    /// The tables whose phrases it searches in the text, as `phraseTables` names
    /// them; "" where there are fewer.
    std::array<std::string_view, 3> tables = {};
};

/// All types, by number.
std::span<const TypeHelp> typeHelp() noexcept;
/// All labels, in the order of docs/verdicts.md.
std::span<const RuleHelp> ruleHelp() noexcept;

/// The row of a type or label, or null.
const TypeHelp* helpForType(int type) noexcept;
const RuleHelp* helpForLabel(std::string_view label) noexcept;

/// What to do about a verdict; "" for a number that is no bounce type.
std::string_view adviceFor(int type, std::string_view label) noexcept;

}  // namespace bouncecheck
