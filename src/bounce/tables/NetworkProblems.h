#pragma once

namespace bouncecheck {

/// Phrases for a receiving host that could not be reached.
inline constexpr const char* const NetworkProblems[] = {
    "Cannot connect to remote host",
    "Service Temporarily Unavailable",
    "",
};

}  // namespace bouncecheck
