#pragma once

#include <cstddef>
#include <string_view>

#include <bouncecheck/LetterCase.h>

namespace bouncecheck {

/// Which text of a message a phrase was found in.
enum class TextOf : unsigned char {
    nothing,
    subject,
    senderAddress,
    senderName,
    /// The text that most checks decide upon.
    data,
    /// The body as a reader sees it.
    body,
    /// The delivery status of a report (RFC 3464), or its Diagnostic-Code.
    report,
};

/// A phrase that was found: the row of its table, and which text it stands in.
struct Match {
    /// The name of the table; empty when nothing was found.
    std::string_view table;
    /// From 0.
    std::size_t row = 0;
    /// As it stands in the table; a string literal.
    const char* phrase = "";
    TextOf text = TextOf::nothing;
    /// Whether the letters had to be of the same case.
    LetterCase letters = LetterCase::ignored;

    constexpr explicit operator bool() const noexcept { return !table.empty(); }
    bool operator==(const Match&) const = default;
};

}  // namespace bouncecheck
