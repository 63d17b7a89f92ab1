#pragma once

#include <string_view>

#include <bouncecheck/Recipient.h>
#include "reasons/ReasonFinding.h"
#include "reasons/ReplyCodes.h"

namespace bouncecheck {

/// Why a recipient failed, and the texts that may say so.
struct Explanation {
    const Recipient& recipient;
    /// Those of the recipient's diagnostic.
    ReplyCodes codes;
    ReasonFinding finding{};
    /// What the message says to people, or says of this recipient; may be empty.
    std::string_view notice{};

    /// The text that the finding is in.
    std::string_view text() const noexcept {
        return finding.inNotice ? notice : std::string_view(recipient.diagnostic);
    }
};

}  // namespace bouncecheck
