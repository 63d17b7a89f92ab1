#include "tool/RuleHelp.h"

#include <algorithm>

#include "tool/tables/RuleHelpTable.h"

namespace bouncecheck {

std::span<const TypeHelp> typeHelp() noexcept { return typeHelpTable; }
std::span<const RuleHelp> ruleHelp() noexcept { return ruleHelpTable; }

const TypeHelp* helpForType(int type) noexcept {
    const auto row = std::ranges::find(typeHelpTable, type, &TypeHelp::type);
    return row == std::end(typeHelpTable) ? nullptr : &*row;
}

const RuleHelp* helpForLabel(std::string_view label) noexcept {
    const auto row = std::ranges::find(ruleHelpTable, label, &RuleHelp::label);
    return row == std::end(ruleHelpTable) ? nullptr : &*row;
}

std::string_view adviceFor(int type, std::string_view label) noexcept {
    const RuleHelp* rule = helpForLabel(label);
    if (rule && !rule->advice.empty()) return rule->advice;
    const TypeHelp* help = helpForType(type);
    return help ? help->advice : std::string_view();
}

}  // namespace bouncecheck
