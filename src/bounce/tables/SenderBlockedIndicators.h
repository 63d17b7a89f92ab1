#pragma once

namespace bouncecheck {

/// Phrases of servers that refuse a sender or take the message for spam.
inline constexpr const char* const SenderBlockedIndicators[] = {
    "not accepting mail",
    "Policy Violation",
    "message appears to be spam",
    "spam rejection",
    "rejected as spam",
    "message refused",
    "detected as spam",
    "not accepting mail",
    "identified as SPAM",
    "community may consider spam",
    "rejected for policy reasons",
    "rejected due to content restrictions",
    "554 Denied",
    "found on one or more DNSBLs",
    "will be permanently deferred",
    "Blocked for abuse",
    "not allowed to send mail",
    "sending MTA's poor reputation",
    "is blocked by",
    "has a poor reputation",
    "blocked using",
    "is_blocked",
    "(RTR:BL)",
    "rejected as spam",
    "Mail Refused",
    "RBL Restriction",
    "poor reputation",
    "IPBL1000",
    "currently blocked",
    "anti-spam system",
    "Blocked for spam",
    "Cloudmark CSI-Global",
    "Message rejected",
    "network is on our block list",
    "sender ip blacklisted",
    "",
};

}  // namespace bouncecheck
