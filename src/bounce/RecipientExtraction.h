#pragma once

#include <cstddef>
#include <string_view>

#include "text/ParseEngine.h"
#include "text/StringBuffer.h"

/// Finding the failed address in the free text of a bounce.
namespace bouncecheck {

class Email2;
class LogBase;

inline constexpr const char* noLongerValid = "is no longer a valid email address";

/// Appends to `address` the word with an '@' before `noLongerValid` in `text`.
/// False, with nothing appended, when there is none.
bool pickBeforeNoLongerValid(std::string_view text, StringBuffer& address);

/// Captures addresses behind markers, the entries of BounceDataMarkers.
///
/// Refers to the text, which must not change meanwhile.
class MarkerCapture {
public:
    enum class Outcome {
        /// The marker or its context does not stand in the text.
        notApplicable,
        /// What follows is a postmaster, who reports the failure; no address.
        postmaster,
        /// The address is what follows the marker, cleaned; it may be empty.
        candidate,
    };

    explicit MarkerCapture(std::string_view text) noexcept : text_(text) {}

    /// Tries one entry; `address` is empty before.
    Outcome capture(std::string_view entry, StringBuffer& address, LogBase& log);

private:
    bool placeBehind(std::string_view entry);
    void captureWord(StringBuffer& address);
    void skipWhiteSpace() noexcept;

    std::string_view text_;
    /// Holds a copy of the text once a marker was found in it.
    ParseEngine cursor_;
};

/// Strips what surrounds an address in running text; empties what has no '@'.
void cleanCapturedAddress(StringBuffer& address);

/// Sets `address` to the first word with an '@' between blanks, for notices of
/// under 4000 bytes.
void scanWords(const StringBuffer& text, StringBuffer& address);

enum class AttachedRecipient { noCertStore, none, found };

/// Sets `address` to the first To recipient of the message attached to `email`.
AttachedRecipient lookUpAttachedRecipient(Email2& email, StringBuffer& address);

}  // namespace bouncecheck
