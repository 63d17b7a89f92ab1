#include <bouncecheck/Rule.h>

#include <algorithm>

#include "bounce/tables/Rules.h"

namespace bouncecheck {

std::span<const Rule> allRules() noexcept { return ruleTable; }

const Rule* ruleOf(std::string_view label) noexcept {
    const auto row = std::ranges::find(ruleTable, label, &Rule::label);
    return row == std::end(ruleTable) ? nullptr : &*row;
}

std::string_view adviceFor(int type, const Rule* rule) noexcept {
    if (rule && !rule->advice.empty()) return rule->advice;
    const VerdictType* row = verdictTypeOf(type);
    return row ? row->advice : std::string_view();
}

}  // namespace bouncecheck
