#pragma once

#include "bounce/tables/providers.h"

namespace bouncecheck {

/// Phrases of challenges and filters that hold a message until its sender acts.
inline constexpr const char* const SpamFilterIndicators[] = {
    "This email address is protected by EarthLink spamBlocker.",
    providers::verificationPage,
    providers::challengeUrl,
    "is using a new anti-spam system",
    "Sender verification is a one-time process",
    "My inbox is now protected against spam",
    "has been placed on hold as a spam",
    "protecting myself from receiving junk mail",
    "Please reply to this message",
    "delivered once your reply message",
    "Sender not pre-approved",
    "Challenge Response",
    "stopped by our spam filter",
    "please visit the URL below",
    "please prove that",
    "classified as SPAM",
    "identified as SPAM",
    "spam message rejected",
    "Blocked by SpamAssassin",
    "detected as spam",
    "Challenge/Response Spam",
    "nschten Spam-Mails",
    "",
};

}  // namespace bouncecheck
