#pragma once

#include <string_view>

namespace bouncecheck {

/// The codes that the text of a reply carries. Both refer to that text, and are empty where
/// it has none.
struct ReplyCodes {
    /// Of SMTP: "550" (RFC 5321, section 4.2).
    std::string_view reply;
    /// Enhanced: "5.1.1" (RFC 3463).
    std::string_view status;
};

/// Whether a code, of either kind, is that of a failure for the time being.
constexpr bool isTemporary(std::string_view code) noexcept { return code.starts_with('4'); }

/// Finds the codes in `text`: a diagnostic, a line or lines of an SMTP dialogue, or a sentence
/// of a notice ("smtp; 550 5.1.1 ...", "said: 550-5.1.1 ...", "#5.1.1", "SMTP error 550").
///
/// A failure counts before a success, a code of each kind that stand together before others,
/// and otherwise the first. Parts of IP addresses, dates, versions, sizes and names are not
/// codes. Any bytes do; linear in their number.
ReplyCodes codesIn(std::string_view text) noexcept;

/// Whether `reply` is the first of several lines, "550-No", without the others, as reports of
/// sendmail have it.
bool isFirstLineOnly(std::string_view reply) noexcept;

}  // namespace bouncecheck
