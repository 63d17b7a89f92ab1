#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include <bouncecheck/Outcome.h>
#include <bouncecheck/Reason.h>
#include "reasons/ReplyCodes.h"

namespace bouncecheck {

/// What is known of the answer that a recipient's mail system gave.
struct Reply {
    Outcome outcome = Outcome::failed;
    /// Enhanced, as a report states it: "5.1.1"; may be empty.
    std::string_view status{};
    /// Of SMTP, where it is known apart from the text: "550"; may be empty.
    std::string_view replyCode{};
    /// The diagnostic, the reply or the explanation, in UTF-8; may have several lines, and
    /// their continuation codes.
    std::string_view text{};
    /// Those of the text, where the caller has looked for them.
    std::optional<ReplyCodes> codes{};
    /// The recipient's; may be empty.
    std::string_view address{};
};

/// A reason and its evidence.
struct ReasonFinding {
    Reason reason = Reason::none;
    ReasonBasis basis = ReasonBasis::none;
    /// Whether the phrase or code stands in the notice rather than in the reply's text.
    bool inNotice = false;
    /// The bytes of the text that gave the reason; no bytes where it was not found in a text.
    std::size_t at = 0;
    std::size_t length = 0;
    /// The row that matched: the phrase, or the code. Static storage.
    std::string_view row;
    /// Whether the reply says that a later try may succeed.
    bool isTransient = false;
    /// Whether the evidence is enough to stop mailing an address.
    bool isSure = false;
};

/// Whether `reply` is the first of several lines, "550-No", without the others, as reports of
/// sendmail have it.
bool isFirstLineOnly(std::string_view reply) noexcept;

/// Why the recipient failed. `Reason::none` where the outcome is no failure and no delay, and
/// `Reason::other` where nothing says why.
///
/// `notice` is a second, weaker text: what the whole message says to people. It is asked only
/// where the reply does not explain itself.
///
/// Any bytes do; linear in their number.
ReasonFinding reasonOf(const Reply& reply, std::string_view notice = {});

/// Whether `text` has words that are those of a reply.
bool explains(std::string_view text);
/// Whether these leave no doubt. "Service unavailable" is said after any refusal.
bool saysWhy(std::string_view text);

}  // namespace bouncecheck
