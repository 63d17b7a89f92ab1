#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "text/ByteBlock.h"

namespace bouncecheck {

/// The next place of one byte in a text, for positions that only grow: what was
/// found, or that nothing is left, is remembered, so no stretch is scanned twice.
class NextByte {
public:
    NextByte(std::string_view text, char byte) noexcept : text_(text), byte_(byte) {}

    std::size_t atOrAfter(std::size_t from) noexcept {
        if (!known_ || next_ < from) {
            next_ = ByteBlock::isFast ? findInStretches(from) : text_.find(byte_, from);
            known_ = true;
        }
        return next_;
    }

private:
    /// How many stretches of `maskedBytes` are looked at before the C library is asked, which
    /// passes over long distances in larger steps.
    static constexpr std::size_t nearStretches = 4;

    /// Places close to each other, as those of line ends are, are found together: a search for each
    /// would take a decision or two that nothing foretells.
    std::size_t findInStretches(std::size_t from) noexcept {
        const auto firstOf = [&](std::uint64_t places) {
            return from + static_cast<std::size_t>(std::countr_zero(places));
        };
        if (known_ && from - start_ < maskedBytes) {
            const std::uint64_t left = places_ >> (from - start_);
            if (left != 0) return firstOf(left);
            from = start_ + maskedBytes;
        }
        for (std::size_t i = 0; i < nearStretches && from < text_.size();
             ++i, from += maskedBytes) {
            start_ = from;
            places_ = placesAtStart(text_.substr(from));
            if (places_ != 0) return firstOf(places_);
        }
        from = text_.find(byte_, from);
        if (from == std::string_view::npos) return from;
        start_ = from;
        places_ = placesAtStart(text_.substr(from));
        return from;
    }

    /// Those in the first stretch of `rest`, with the lowest bit for its first byte.
    std::uint64_t placesAtStart(std::string_view rest) const noexcept {
        if (rest.size() >= maskedBytes) return maskOf(rest.data(), byte_);
        std::array<char, maskedBytes> last{};
        std::memcpy(last.data(), rest.data(), rest.size());
        return maskOf(last.data(), byte_) & ((std::uint64_t{1} << rest.size()) - 1);
    }

    std::string_view text_;
    char byte_;
    bool known_ = false;
    std::size_t next_ = 0;
    /// The stretch that was looked at last.
    std::size_t start_ = 0;
    std::uint64_t places_ = 0;
};

}  // namespace bouncecheck
