#pragma once

#include <string_view>

#include <bouncecheck/Reason.h>

namespace bouncecheck {

/// Whether a reason says that there is no mailbox that takes mail.
constexpr bool isAboutMailbox(Reason reason) noexcept {
    return reason == Reason::unknownMailbox || reason == Reason::unknownDomain ||
           reason == Reason::inactiveMailbox;
}

/// How much the code of a reply says.
enum class Trust {
    /// Enough to act upon.
    definite,
    /// Something: most systems give it to many kinds of failures.
    vague,
};

/// An enhanced status code, as it is registered: "X.1.1", or a subject: "X.1".
struct StatusRow {
    std::string_view code;
    std::string_view name;
    Reason reason;
    Trust trust;
};

/// A reply code of SMTP.
struct ReplyCodeRow {
    std::string_view code;
    Reason reason;
    Trust trust;
};

/// A phrase of replies.
struct PhraseRow {
    std::string_view phrase;
    Reason reason;
    /// Whether what it says lasts, even where the code is that of a temporary failure.
    bool lasts = false;
};

}  // namespace bouncecheck
