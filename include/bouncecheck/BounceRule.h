#pragma once

#include <cstdint>
#include <span>

#include <bouncecheck/Export.h>

namespace bouncecheck {

/// One rule: a phrase looked for in one text of the message, and what it means.
struct BounceRule {
    /// Which text: see RuleSource. `RULE_END` ends a table; a rule with any
    /// other value is passed over.
    std::int32_t source;
    /// How: see RuleMode. A rule with any other value is passed over.
    std::int32_t mode;
    const char* phrase;
    /// A BounceType.
    std::int32_t bounceType;
};

enum RuleSource : std::int32_t {
    RULE_END = 0,
    RULE_SUBJECT = 1,
    RULE_BOUNCE_DATA = 2,
    RULE_FROM_NAME = 3,
    RULE_FROM_ADDR = 4,
};

enum RuleMode : std::int32_t {
    RULE_BEGINS_WITH = 1,
    RULE_BEGINS_WITH_NO_CASE = 2,
    RULE_CONTAINS = 3,
    RULE_CONTAINS_NO_CASE = 4,
};

/// The table of last resort: subjects and senders that bounces share with other mail, in
/// the order of their search.
BOUNCECHECK_EXPORT std::span<const BounceRule> lastResortRules() noexcept;

}  // namespace bouncecheck
