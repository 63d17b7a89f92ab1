#pragma once

#include <optional>
#include <string_view>

#include <bouncecheck/Outcome.h>
#include "reasons/ReplyCodes.h"

namespace bouncecheck {

/// What is known of the answer that a recipient's mail system gave.
struct Reply {
    Outcome outcome = Outcome::failed;
    /// Enhanced, as a report states it: "5.1.1"; may be empty.
    std::string_view status{};
    /// Of SMTP, where it is known apart from the text: "550"; may be empty.
    std::string_view replyCode{};
    /// The diagnostic, the reply or the explanation, in UTF-8; may have several lines, and
    /// their continuation codes.
    std::string_view text{};
    /// Those of the text, where the caller has looked for them.
    std::optional<ReplyCodes> codes{};
    /// The recipient's; may be empty.
    std::string_view address{};
};

}  // namespace bouncecheck
