#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace bouncecheck::phrases {

/// The most rows that a catalog may have.
inline constexpr std::size_t maxRows = 1024;

/// A set of rows of a catalog, by their index.
class RowSet {
public:
    constexpr void add(std::size_t row) noexcept {
        words_[row / 64] |= std::uint64_t{1} << (row % 64);
    }
    constexpr bool has(std::size_t row) const noexcept {
        return words_[row / 64] >> (row % 64) & 1;
    }
    /// The first member from `from` on; `end` when there is none before that.
    constexpr std::size_t next(std::size_t from, std::size_t end) const noexcept {
        while (from < end) {
            const std::uint64_t left = words_[from / 64] >> (from % 64);
            if (left != 0) {
                return std::min(from + static_cast<std::size_t>(std::countr_zero(left)), end);
            }
            from = (from / 64 + 1) * 64;
        }
        return end;
    }

private:
    std::array<std::uint64_t, maxRows / 64> words_{};
};

}  // namespace bouncecheck::phrases
