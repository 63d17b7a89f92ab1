#pragma once

#include <optional>
#include <vector>

#include "bounce/RecipientExtraction.h"

namespace bouncecheck {

/// What repeated looks at the text of one message need not find again.
struct BodyMemory {
    /// The state of the text that the rest is about.
    unsigned long dataRevision = 0;
    /// What each marker in the text led to, once none led to an address.
    std::optional<std::vector<MarkerOutcome>> vainMarkers;
    /// What is logged of an automatic reply; null when it is none.
    std::optional<const char*> autoReplyLine;
    bool namesNoAttachedRecipient = false;
};

}  // namespace bouncecheck
