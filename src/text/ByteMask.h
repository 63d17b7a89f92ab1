#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace bouncecheck {

/// How many bytes a mask is for.
inline constexpr std::size_t maskedBytes = 64;

namespace plain {

/// What `maskOf` finds, on any processor.
inline std::uint64_t maskOf(const char* bytes, char byte) noexcept {
    constexpr std::uint64_t ones = 0x0101010101010101;
    constexpr std::uint64_t lows = 0x7F * ones;
    // Moves the lowest bits of eight bytes side by side, to the top.
    constexpr std::uint64_t gather = 0x0102040810204080;
    std::uint64_t mask = 0;
    for (std::size_t i = 0; i < maskedBytes; i += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        if constexpr (std::endian::native == std::endian::little) {
            std::memcpy(&word, bytes + i, sizeof word);
        } else {
            for (std::size_t j = sizeof word; j-- > 0;) {
                word = word << 8 | static_cast<unsigned char>(bytes[i + j]);
            }
        }
        const std::uint64_t differs = word ^ (static_cast<unsigned char>(byte) * ones);
        const std::uint64_t isSame = ~(((differs & lows) + lows) | differs | lows);
        mask |= ((isSame >> 7) * gather >> 56) << i;
    }
    return mask;
}

}  // namespace plain

/// Which of the `maskedBytes` bytes at `bytes` are `byte`, the first in the lowest bit. Whoever
/// takes the places from it has fewer branches that nothing foretells than a search for each.
inline std::uint64_t maskOf(const char* bytes, char byte) noexcept {
#ifdef __SSE2__
    const __m128i sought = _mm_set1_epi8(byte);
    std::uint64_t mask = 0;
    for (std::size_t i = 0; i < maskedBytes; i += sizeof(__m128i)) {
        __m128i some;
        std::memcpy(&some, bytes + i, sizeof some);
        const int same = _mm_movemask_epi8(_mm_cmpeq_epi8(some, sought));
        mask |= static_cast<std::uint64_t>(same) << i;
    }
    return mask;
#else
    return plain::maskOf(bytes, byte);
#endif
}

}  // namespace bouncecheck
