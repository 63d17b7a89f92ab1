#pragma once

namespace bouncecheck {

/// Phrases of complaints, in the subject.
inline constexpr const char* const AbuseIndicators[] = {
    "email-abuse",
    "complaint about message",
    "abuse report",
    "",
};

}  // namespace bouncecheck
