#pragma once

namespace bouncecheck {

/// Phrases of unsubscribe messages, in the subject.
inline constexpr const char* const UnsubscribeSubjectIndicators[] = {
    "Unsubscribe",
    "unsubscribed from your",
    "",
};

}  // namespace bouncecheck
