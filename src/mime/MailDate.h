#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace bouncecheck {

/// The time that a Date field states, in seconds since 1970-01-01 00:00 UTC; nothing
/// when it states none, or one that is not on the calendar.
///
/// `text` is the value of the field, any bytes. Read are the form of RFC 5322,
/// section 3.3, with comments between the words, the obsolete years and zones of
/// section 4.3, and what is found besides: months written out, and the words in
/// another order ("Thu Sep 18 17:54:04 2008"). An unknown zone reads as UTC, as does a
/// missing one. Linear in the size of `text`.
std::optional<std::int64_t> parseMailDate(std::string_view text) noexcept;

}  // namespace bouncecheck
