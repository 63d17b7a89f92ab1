#pragma once

#include <cstddef>
#include <string_view>

#include "text/StringBuffer.h"

/// Finding the failed address in the free text of a bounce.
namespace bouncecheck {

class Email2;
struct Marker;

inline constexpr const char* noLongerValid = "is no longer a valid email address";

/// Appends to `address` the word with an '@' before `noLongerValid` in `text`.
/// False, with nothing appended, when there is none.
bool pickBeforeNoLongerValid(std::string_view text, StringBuffer& address);

/// What a marker leads to.
enum class MarkerOutcome {
    /// It does not stand behind its context.
    notApplicable,
    /// A postmaster, who reports the failure; no address.
    postmaster,
    /// The address, cleaned, or nothing that is one.
    candidate,
};

/// Captures into `address`, empty before, what follows `marker`, whose context
/// stands in `text` and which itself stands first at `place`.
MarkerOutcome captureBehind(const Marker& marker, std::string_view text, std::size_t place,
                            StringBuffer& address);

/// Strips what surrounds an address in running text; empties what has no '@'.
void cleanCapturedAddress(StringBuffer& address);

/// Sets `address` to the first word with an '@' between blanks, for notices of
/// under 4000 bytes.
void scanWords(const StringBuffer& text, StringBuffer& address);

enum class AttachedRecipient { noCertStore, none, found };

/// Sets `address` to the first To recipient of the message attached to `email`.
AttachedRecipient lookUpAttachedRecipient(Email2& email, StringBuffer& address);

}  // namespace bouncecheck
