#pragma once

#include <string_view>

namespace bouncecheck {

/// Whether a file that begins so holds output of this program, in any of its forms, rather
/// than mail. Nothing that begins with a header field or an envelope does. An empty file
/// does: output that lists nothing is empty. `beginning` is the whole file, or its first
/// two lines.
bool holdsOutput(std::string_view beginning) noexcept;

}  // namespace bouncecheck
