#pragma once

#include <span>
#include <string_view>

#include <bouncecheck/Export.h>

namespace bouncecheck {

/// What a message means. The values are those that `checkEmail` returns; 4, 8
/// and 13 are never returned.
enum BounceType : int {
    /// Not a bounce, or no verdict.
    BOUNCE_NONE = 0,
    /// Permanent failure: unknown user, invalid address.
    BOUNCE_HARD = 1,
    /// Temporary failure: mailbox full, network trouble.
    BOUNCE_SOFT = 2,
    /// A bounce that does not name the address that failed.
    BOUNCE_NO_RECIPIENT = 3,
    /// Refused by a filter, or because of its sender.
    BOUNCE_BLOCKED = 5,
    /// An automatic or out-of-office reply.
    BOUNCE_AUTO_REPLY = 6,
    /// Delayed and still being tried, or a report of success.
    BOUNCE_TRANSIENT = 7,
    /// A request to be unsubscribed.
    BOUNCE_UNSUBSCRIBE = 9,
    /// A notice of a virus or content scanner.
    BOUNCE_VIRUS = 10,
    /// Looks like a bounce, but no rule knows its kind.
    BOUNCE_UNCLASSIFIED = 11,
    /// A challenge: the recipient's filter wants the sender to confirm.
    BOUNCE_CHALLENGE = 12,
    /// A receipt: the message was displayed.
    BOUNCE_DISPOSITION = 14,
    /// A complaint about abuse.
    BOUNCE_ABUSE = 15,
};

/// What a verdict of a type means to the sender of the original message.
struct VerdictType {
    BounceType type;
    /// For people and programs; see `bounceTypeName`.
    const char* name;
    std::string_view meaning;
    /// What to do about it.
    std::string_view advice;
};

/// All types, by number.
BOUNCECHECK_EXPORT std::span<const VerdictType> allVerdictTypes() noexcept;
/// The row of a type; null for a number that is no bounce type.
BOUNCECHECK_EXPORT const VerdictType* verdictTypeOf(int type) noexcept;

/// A short name for people and programs ("hard", "auto-reply"); "" for a number
/// that is no bounce type. The text is static.
BOUNCECHECK_EXPORT const char* bounceTypeName(int type) noexcept;

}  // namespace bouncecheck
