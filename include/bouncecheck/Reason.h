#pragma once

#include <optional>
#include <span>
#include <string_view>

#include <bouncecheck/Export.h>

namespace bouncecheck {

/// Why a recipient did not get the mail.
enum class Reason {
    /// There is nothing to explain: the mail was delivered, say.
    none,
    unknownMailbox,
    inactiveMailbox,
    unknownDomain,
    mailboxFull,
    messageTooLarge,
    content,
    authentication,
    reputation,
    policy,
    rateLimit,
    unreachable,
    expired,
    system,
    /// It failed, and nothing says why.
    other,
};

/// What a reason means to the sender.
struct ReasonMeaning {
    Reason reason;
    /// The name in results: "unknown-mailbox"; empty for `Reason::none`.
    std::string_view name;
    std::string_view meaning;
    /// What to do about it.
    std::string_view action;
};

/// All reasons, in the order of the enumeration. Static storage, as are all texts here.
BOUNCECHECK_EXPORT std::span<const ReasonMeaning> allReasons() noexcept;
/// The name in results: "unknown-mailbox"; "" for none, and for a value that is no reason.
BOUNCECHECK_EXPORT std::string_view nameOf(Reason reason) noexcept;
/// The reason of that name, letter case ignored; nothing for any other text, the empty one
/// included.
BOUNCECHECK_EXPORT std::optional<Reason> reasonNamed(std::string_view name) noexcept;

/// What gave a reason.
enum class ReasonBasis {
    /// Nothing did.
    none,
    /// A row of the phrases of replies.
    phrase,
    /// An enhanced status code.
    status,
    /// The reply code of SMTP.
    replyCode,
};

/// The name in results: "phrase"; "" for none.
constexpr std::string_view nameOf(ReasonBasis basis) noexcept {
    switch (basis) {
        case ReasonBasis::phrase: return "phrase";
        case ReasonBasis::status: return "status";
        case ReasonBasis::replyCode: return "reply-code";
        case ReasonBasis::none: break;
    }
    return {};
}

}  // namespace bouncecheck
