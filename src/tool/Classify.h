#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "log/LogTrace.h"

namespace bouncecheck {

/// Everything that the outputs show of one classified message.
struct Classified {
    std::string source;
    int type = 0;
    /// The label of the deciding rule; "" when it has none.
    std::string label;
    std::string address;
    std::string data;
    /// Empty unless it was asked for.
    std::vector<LogTrace::Event> trace;
};

/// The index of the last event that names the deciding rule: its label, or the
/// type that the rule table gave. The number of events when there is none.
std::size_t decidingEvent(std::span<const LogTrace::Event> events) noexcept;

enum class Trace { off, on };

/// Classifies the message whose bytes are `message`.
Classified classify(std::string source, std::string message, Trace trace);

}  // namespace bouncecheck
