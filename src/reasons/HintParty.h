#pragma once

#include <string_view>

#include "reasons/ReasonRow.h"
#include "reasons/ReplyText.h"

namespace bouncecheck {

/// Whom words that only hint at why are said of.
enum class Party {
    unnamed,
    /// A host, by its IP address.
    host,
    /// The recipient's domain, by its name.
    domain,
    /// Their mailbox, by its name or as all that a sentence speaks of.
    mailbox,
};

/// Whom `hint`, which stands at `place` of the reply `text`, is said of. `recipient` is the
/// address; may be empty.
Party partyOf(const PhraseRow& hint, std::string_view text, TextPart place,
              std::string_view recipient);

/// Whether a phrase begins with a mailbox: "user unknown", "@ not found".
bool beginsWithMailbox(std::string_view phrase);

}  // namespace bouncecheck
