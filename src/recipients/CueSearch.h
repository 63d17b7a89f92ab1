#pragma once

#include <span>
#include <string_view>

#include "recipients/Cues.h"
#include "recipients/NoticeLine.h"

namespace bouncecheck {

/// Adds the cues of `lines`, at least one, which stand in one text in this order.
void findCues(std::span<NoticeLine> lines);

/// The cues of `text`, which is one line.
Cues cuesIn(std::string_view text);

}  // namespace bouncecheck
