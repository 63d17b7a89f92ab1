#pragma once

#include <string_view>

namespace bouncecheck {

/// The label of the rule that a log line announces: "1.10" of "Bounce type
/// 1.10" and "6.481" of "Bounce type: 6.481"; empty for every other line. The
/// last such line of a classification tells its rule. Refers into `line`.
std::string_view verdictLabel(std::string_view line) noexcept;

}  // namespace bouncecheck
