#pragma once

namespace bouncecheck {

/// Phrases of bounces that do not tell which recipient failed.
inline constexpr const char* const CannotDetermineRecipientStrings[] = {
    "The recipient of this message has exceeded their message limits, they have not received",
    "(The name was not found at the remote site. Check that",
    "To learn more about MSN Groups",
    "",
};

}  // namespace bouncecheck
