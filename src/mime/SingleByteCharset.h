#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace bouncecheck {

/// U+FFFD, for a byte that stands for nothing.
inline constexpr std::uint32_t noCharacter = 0xFFFD;

/// A charset of single bytes, of which those below 128 are ASCII: the code point
/// that the byte 128 + index stands for, below U+10000.
using UpperHalf = std::array<std::uint32_t, 128>;

/// A charset of single bytes: the code point that each stands for, below U+10000.
using ByteMeanings = std::array<std::uint32_t, 256>;

/// `bytes` in UTF-8. Ends where that becomes longer than `bytes` by more than
/// `limits::charsetGrowth`.
std::string decodeSingleBytes(std::string_view bytes, const UpperHalf& upper);
std::string decodeSingleBytes(std::string_view bytes, const ByteMeanings& meanings);

}  // namespace bouncecheck
