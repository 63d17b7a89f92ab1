#pragma once

#include <cstddef>

/// How far a message is taken apart. What lies beyond a limit is not lost: it
/// stays text of the entity around it.
namespace bouncecheck::limits {

/// Multiparts inside each other, the message's own included. Real mail has
/// under ten; the bound keeps walks over the tree shallow.
inline constexpr std::size_t nesting = 64;

/// Parts of one message at all levels. Real mail has under a thousand.
inline constexpr std::size_t parts = 10'000;

/// Parameters of one header field, continuations counted each. Putting
/// continuations in order costs more than linear time without a bound.
inline constexpr std::size_t parameters = 128;

}  // namespace bouncecheck::limits
