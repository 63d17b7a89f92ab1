#pragma once

#include <string_view>

#include "reasons/GivenCodes.h"
#include "reasons/Reply.h"

namespace bouncecheck {

/// A reply, its codes, and the notice that it came with: what all that look for its reason ask.
struct ReplyReading {
    explicit ReplyReading(const Reply& given, std::string_view noticeText = {})
        : reply(given), codes(given), notice(noticeText) {}

    const Reply& reply;
    GivenCodes codes;
    /// What the whole message says to people; may be empty.
    std::string_view notice;
};

}  // namespace bouncecheck
