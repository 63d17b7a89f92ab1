#pragma once

#include <cstddef>
#include <string_view>

#include <bouncecheck/Reason.h>

namespace bouncecheck {

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
    std::string_view row{};
    /// Whether the reply says that a later try may succeed.
    bool isTransient = false;
    /// Whether the evidence is enough to stop mailing an address.
    bool isSure = false;

    /// Whether anything was found.
    bool isFound() const noexcept { return basis != ReasonBasis::none; }
    /// Whether it was found in the words or codes of the reply's text.
    bool isInReply() const noexcept { return !inNotice && length > 0; }
    /// Where the text goes on behind what was found.
    std::size_t end() const noexcept { return at + length; }
};

}  // namespace bouncecheck
