#pragma once

#include <string_view>

#include <bouncecheck/BounceRule.h>

namespace bouncecheck {

/// Whether a rule holds for a text.
bool matches(const BounceRule& rule, std::string_view text);

}  // namespace bouncecheck
