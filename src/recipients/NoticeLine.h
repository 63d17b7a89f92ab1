#pragma once

#include <string_view>

#include "recipients/Cues.h"
#include "text/Ascii.h"

namespace bouncecheck {

/// A line of the text of a notice.
struct NoticeLine {
    /// Without its line end.
    std::string_view text;
    Cues cues{};
    /// Whether it is a field of a header, or the fold of one.
    bool isOfHeader = false;

    bool isBlank() const noexcept { return ascii::trim(text).empty(); }
    bool has(Cue cue) const noexcept { return cues.has(cue); }
};

}  // namespace bouncecheck
