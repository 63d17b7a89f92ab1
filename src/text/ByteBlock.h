#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace bouncecheck {

namespace plain {

/// What `ByteBlock` is on any processor: two words.
class ByteBlock {
public:
    static constexpr std::size_t size = 16;
    /// Whether that takes less time than looking at one byte after the other.
    static constexpr bool isFast = false;

    explicit ByteBlock(const char* bytes) noexcept {
        for (std::size_t i = size; i-- > 0;) {
            std::uint64_t& word = words_[i / bytesOfWord];
            word = word << 8 | static_cast<unsigned char>(bytes[i]);
        }
    }

    unsigned equalTo(char c) const noexcept {
        const std::uint64_t sought = static_cast<unsigned char>(c) * ones;
        return bits([sought](std::uint64_t word) { return ~highBitOf(word ^ sought); });
    }
    unsigned lessThan(char c) const noexcept {
        unsigned all = 0;
        for (std::size_t i = 0; i < size; ++i) {
            const auto byte =
                static_cast<signed char>(words_[i / bytesOfWord] >> (i % bytesOfWord * 8));
            all |= unsigned{byte < static_cast<signed char>(c)} << i;
        }
        return all;
    }

private:
    static constexpr std::size_t bytesOfWord = sizeof(std::uint64_t);
    static constexpr std::uint64_t ones = 0x0101010101010101;

    /// The highest bit of each byte that is not 0, and nothing of the others.
    static constexpr std::uint64_t highBitOf(std::uint64_t word) noexcept {
        constexpr std::uint64_t low = ones * 0x7F;
        return (((word & low) + low) | word) & ones * 0x80;
    }
    /// The highest bits of the bytes that `answer` makes of the words.
    template <class Answer>
    unsigned bits(Answer answer) const noexcept {
        // Moves them side by side, to the top.
        constexpr std::uint64_t gather = 0x0102040810204080;
        const auto gathered = [&](std::uint64_t word) {
            return static_cast<unsigned>((answer(word) >> 7 & ones) * gather >> 56);
        };
        return gathered(words_[0]) | gathered(words_[1]) << bytesOfWord;
    }

    std::array<std::uint64_t, size / bytesOfWord> words_{};
};

}  // namespace plain

#ifdef __SSE2__
/// Sixteen bytes that are compared with another one all together. Answers have a bit for each of
/// them, the lowest for the first.
class ByteBlock {
public:
    static constexpr std::size_t size = 16;
    static constexpr bool isFast = true;

    explicit ByteBlock(const char* bytes) noexcept
        : bytes_(_mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes))) {}

    unsigned equalTo(char c) const noexcept { return bits(_mm_cmpeq_epi8(bytes_, all(c))); }
    /// Those that are less as signed numbers: all above 127 are less than any in ASCII.
    unsigned lessThan(char c) const noexcept { return bits(_mm_cmplt_epi8(bytes_, all(c))); }

private:
    static __m128i all(char c) noexcept { return _mm_set1_epi8(c); }
    static unsigned bits(__m128i answers) noexcept {
        return static_cast<unsigned>(_mm_movemask_epi8(answers));
    }

    __m128i bytes_;
};
#else
using plain::ByteBlock;
#endif

/// How many bytes a mask is for.
inline constexpr std::size_t maskedBytes = 64;

/// Which of the `maskedBytes` bytes at `bytes` are `byte`, the first in the lowest bit. To walk the
/// bits of a mask takes fewer branches that cannot be predicted than to search for each byte.
template <class Block = ByteBlock>
std::uint64_t maskOf(const char* bytes, char byte) noexcept {
    std::uint64_t mask = 0;
    for (std::size_t i = 0; i < maskedBytes; i += Block::size) {
        mask |= std::uint64_t{Block(bytes + i).equalTo(byte)} << i;
    }
    return mask;
}

}  // namespace bouncecheck
