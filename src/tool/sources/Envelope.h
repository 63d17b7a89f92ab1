#pragma once

#include <cstddef>
#include <string_view>

namespace bouncecheck {

/// The longest line that may be an envelope; in bytes.
inline constexpr std::size_t longestEnvelope = 1000;

/// Whether `line`, without its end, is one that begins a message in a mailbox
/// file: "From ", a sender of any form, and a date with month, time and year as
/// in "Thu Sep 18 17:54:04 2008" or "2008-09-18 17:54:04". A sentence that
/// begins with "From" is none.
bool isEnvelope(std::string_view line) noexcept;

}  // namespace bouncecheck
