#pragma once

#include <string_view>

namespace bouncecheck {

/// What a message says happened to the original mail at a recipient. Most are actions of a
/// delivery report (RFC 3464, section 2.3.3).
enum class Outcome {
    failed,
    /// Still being tried.
    delayed,
    delivered,
    /// Handed to a system that sends no reports.
    relayed,
    /// Delivered to an alias or a list, which sends it on.
    expanded,
    /// The recipient complained, or wants no more mail (RFC 5965).
    complained,
    /// The recipient's program displayed or handled it (RFC 8098).
    displayed,
    /// Something was reported of the recipient, but not what.
    unknown,
};

/// The name in results: "failed".
constexpr std::string_view nameOf(Outcome outcome) noexcept {
    switch (outcome) {
        case Outcome::failed: return "failed";
        case Outcome::delayed: return "delayed";
        case Outcome::delivered: return "delivered";
        case Outcome::relayed: return "relayed";
        case Outcome::expanded: return "expanded";
        case Outcome::complained: return "complained";
        case Outcome::displayed: return "displayed";
        case Outcome::unknown: break;
    }
    return "unknown";
}

}  // namespace bouncecheck
