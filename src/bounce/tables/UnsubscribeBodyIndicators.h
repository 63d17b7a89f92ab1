#pragma once

namespace bouncecheck {

/// Phrases of unsubscribe messages, in the text.
inline constexpr const char* const UnsubscribeBodyIndicators[] = {
    "unsubscribed from your",
    "sent this email to unsubscribe",
    "",
};

}  // namespace bouncecheck
