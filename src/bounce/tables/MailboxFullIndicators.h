#pragma once

namespace bouncecheck {

/// Phrases for a mailbox over its quota. Cut first letters match either case of
/// the sentence they begin.
inline constexpr const char* const MailboxFullIndicators[] = {
    "ailbox full",
    "ailbox is full",
    "uota exceeded",
    "ailbox is FULL",
    "ailbox has exceeded",
    "temporarily over quota",
    "ailbox has exceeded the limit",
    "This mailbox has exceeded their disk quota.",
    "Disk quota exceeded message delivery",
    "User mailbox exceeds allowed message count:",
    "Message would exceed quota",
    "out of disk",
    "Quota exceed the hard limit",
    "User has exhausted allowed storage",
    "ailbox over quota",
    "user is over quota",
    "quota exceeded",
    "QuotaExceeded",
    "temporarily deferred",
    "box is full",
    "over the allowed quota",
    "Over quota",
    "Quota Exceeded",
    "exceed the quota",
    "User has full mailbox",
    "mailbox for user is full",
    "MDN-sent-automatically; deleted",
    "is over quota",
    "account is full",
    "out of storage",
    "",
};

}  // namespace bouncecheck
