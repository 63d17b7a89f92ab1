#pragma once

#include <string_view>

namespace bouncecheck {

/// Whether `line`, without white space around it, is drawn as a rule, with or without words:
/// "-----", "=== cut ===".
bool isRule(std::string_view line);

/// Whether `line` is a rule whose words say that the returned message begins there.
bool isRuleOfReturned(std::string_view line);

}  // namespace bouncecheck
