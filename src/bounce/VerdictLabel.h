#pragma once

#include <span>
#include <string_view>

#include "log/LogTrace.h"

namespace bouncecheck {

/// The label of the rule that a log line announces: "1.10" of "Bounce type
/// 1.10" and "6.481" of "Bounce type: 6.481"; empty for every other line. Refers
/// into `line`.
std::string_view verdictLabel(std::string_view line) noexcept;

/// The label of the last such line among the events of a classification: that of
/// the deciding rule. Empty when there is none. Refers into the events.
std::string_view lastVerdictLabel(std::span<const LogTrace::Event> events) noexcept;

}  // namespace bouncecheck
