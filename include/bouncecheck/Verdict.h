#pragma once

#include <bouncecheck/BounceType.h>
#include <bouncecheck/ByteStore.h>
#include <bouncecheck/Export.h>
#include <bouncecheck/Match.h>
#include <bouncecheck/Rule.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace bouncecheck {

/// Where an address was found.
enum class AddressSource : unsigned char {
    none,
    /// The field From: whoever sent the message.
    sender,
    subject,
    /// A field of the message's own header.
    header,
    /// A field of a report.
    report,
    /// The text; behind a marker, if there is one.
    text,
    /// A recipient of the message that came back.
    returned,
};

/// What a message means, and what that was decided by. A value: it refers to nothing but
/// the constant tables of the library. Absent values are empty.
struct Verdict {
    BounceType type = BOUNCE_NONE;
    /// The rule that decided; null when none did, or a row of the table of last resort
    /// (see `lastResortRules`), which `match` then names.
    const Rule* rule = nullptr;
    /// The phrase that decided: its list, its row, and the text that it stands in.
    Match match;
    /// The pattern of the subject or the sender for which the text was read.
    Match pattern;

    /// The address that failed or answered. Usually a bare address, but whatever the
    /// message has in its place otherwise: check the form before use.
    std::string address;
    AddressSource addressSource = AddressSource::none;
    /// What the address stands behind in the text; without the context that the row of
    /// its list begins with.
    Match marker;

    /// What was decided upon: decoded, in UTF-8 unless its charset was unknown, with CRLF
    /// line ends unless it was no text.
    ByteStore text;

    /// Where in `text` the phrase that decided stands first, in bytes; npos when it stands in
    /// another text of the message, such as the subject.
    BOUNCECHECK_EXPORT std::size_t phrasePlace() const;
    /// Where in `text` the address stands, in any letter case, behind its marker if it has
    /// one; npos when it does not.
    BOUNCECHECK_EXPORT std::size_t addressPlace() const;

    /// The label of the rule, such as "1.10"; "" when there is no rule.
    std::string_view label() const noexcept { return rule ? rule->label() : std::string_view(); }
};

}  // namespace bouncecheck
