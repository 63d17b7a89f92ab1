#pragma once

#include <cstddef>
#include <string_view>

#include <bouncecheck/classes/StringBuffer.h>

/// Finding the failed address in the free text of a bounce.
namespace bouncecheck {

class Entity;
struct Marker;

/// Appends to `address` the word with an '@' before the first `phrase` in `text`.
/// False, with nothing appended, when there is none.
bool pickBefore(std::string_view phrase, std::string_view text, StringBuffer& address);

/// What a marker leads to.
enum class MarkerOutcome {
    /// It does not stand behind its context.
    notApplicable,
    /// A postmaster, who reports the failure; no address.
    postmaster,
    /// The address, cleaned, or nothing that is one.
    candidate,
};

/// What follows the markers in one text.
///
/// Hundreds of markers can each have the whole text behind them: a word without an
/// end, say. Once they have read the text several times over without an address,
/// those that are left read no more than `oneLine` each.
class MarkerCaptures {
public:
    /// The longest line of mail in bytes (RFC 5322, section 2.1.1).
    static constexpr std::size_t oneLine = 998;

    explicit MarkerCaptures(std::string_view text) noexcept
        : text_(text), allowance_(4 * text.size()) {}

    /// Captures into `address`, empty before, what follows `marker`, whose context
    /// stands in the text and which itself stands first at `place`.
    MarkerOutcome behind(const Marker& marker, std::size_t place, StringBuffer& address);

private:
    std::string_view text_;
    /// How many bytes may still be read without a limit.
    std::size_t allowance_;
};

/// Strips what surrounds an address in running text; empties what has no '@'.
void cleanCapturedAddress(StringBuffer& address);

/// Sets `address` to the first word with an '@' between blanks, for notices of
/// under 4000 bytes.
void scanWords(const StringBuffer& text, StringBuffer& address);

/// Sets `address` to the first To recipient of the message attached to `message`; false
/// when there is none.
bool lookUpAttachedRecipient(const Entity& message, StringBuffer& address);

}  // namespace bouncecheck
