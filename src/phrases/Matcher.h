#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <stdexcept>
#include <string_view>

#include "phrases/PackedTexts.h"
#include "text/Ascii.h"

/// Finding which of many phrases stand in a text, ASCII letter case ignored, in
/// one pass over it.
///
/// Of each phrase one window of `windowSize` bytes is chosen for every alignment
/// modulo `stride`, so that wherever the phrase stands, one of its windows begins
/// at a multiple of `stride`. Only those places of the text are looked at: a hash
/// of the window asks a bit set that fits into a first-level cache, and few answers
/// are yes. Those are looked up among the windows, then compared in full.
namespace bouncecheck::phrases {

inline constexpr std::size_t windowSize = 4;
inline constexpr std::size_t stride = 4;
/// Shorter phrases have no window at some alignment.
inline constexpr std::size_t shortest = windowSize + stride - 1;
inline constexpr std::size_t longest = 255;

/// Sizes of the bit set and of the table behind it for `windows` windows. Small sets leave room
/// in the cache to others; in short buckets, what is found first is mostly what was sought.
inline constexpr std::size_t largestFilterBits = std::size_t{1} << 18;
inline constexpr std::size_t bitsOfWindow = 64;
inline constexpr std::size_t bitsOfBucket = 16;
constexpr std::size_t filterBitsFor(std::size_t windows) noexcept {
    return std::min(largestFilterBits, std::bit_ceil(bitsOfWindow * (windows + 1)));
}
constexpr std::size_t bucketsFor(std::size_t windows) noexcept {
    return filterBitsFor(windows) / bitsOfBucket;
}

/// Makes letters of either case the same. It makes some other bytes the same as
/// well, which a filter may and a comparison must not.
constexpr unsigned char folded(char c) noexcept {
    return static_cast<unsigned char>(static_cast<unsigned char>(c) | 0x20);
}

/// The folded bytes of the window at `at`, the first the least significant.
constexpr std::uint32_t foldedBytes(std::string_view text, std::size_t at) noexcept {
    std::uint32_t bytes = 0;
    for (std::size_t i = 0; i < windowSize; ++i) {
        bytes |= std::uint32_t{folded(text[at + i])} << (8 * i);
    }
    return bytes;
}

/// Less than `largestFilterBits`; its lowest bits are used where the set has fewer. The factor,
/// 1 + 2^13 - 2^20, spreads windows of letters as well as any, and vectors without a product of
/// their own (SSE2) need two shifts for it.
constexpr std::uint32_t hashOf(std::uint32_t window) noexcept {
    return (window * 0xFFF02001u) >> (32 - std::bit_width(largestFilterBits - 1));
}

constexpr std::size_t bucketOf(std::uint32_t hash) noexcept { return hash / bitsOfBucket; }

struct Window {
    std::uint32_t bytes = 0;
    /// The folded bytes of the phrase at `checkOffset`, away from the window:
    /// they distinguish most phrases with the same window.
    std::uint32_t check = 0;
    std::uint16_t phrase = 0;
    std::uint8_t offset = 0;
    std::uint8_t checkOffset = 0;
};

/// How common windows are among the phrases themselves, which are what the texts
/// are about, and by their letters.
class Rarity {
public:
    /// Throws std::invalid_argument for a phrase not of `shortest` to `longest`
    /// bytes.
    explicit constexpr Rarity(std::span<const std::string_view> texts) {
        letters_.fill(1);
        std::uint8_t rank = 30;
        for (const char c : std::string_view(" etaoinsrhldcumfpgwybvkxjqz")) {
            letters_[folded(c)] = rank--;
        }
        for (const std::string_view text : texts) {
            if (text.size() < shortest || text.size() > longest) {
                throw std::invalid_argument("a phrase is too short or too long");
            }
            for (std::size_t at = 0; at + windowSize <= text.size(); ++at) {
                ++counts_[slotOf(foldedBytes(text, at))];
            }
        }
    }

    /// The offset, `residue` modulo `stride`, of the rarest window.
    constexpr std::size_t rarest(std::string_view text, std::size_t residue) const {
        std::size_t best = residue;
        std::uint32_t bestScore = static_cast<std::uint32_t>(-1);
        for (std::size_t at = residue; at + windowSize <= text.size(); at += stride) {
            std::uint32_t score = 256u * counts_[slotOf(foldedBytes(text, at))];
            for (std::size_t i = 0; i < windowSize; ++i) score += letters_[folded(text[at + i])];
            if (score >= bestScore) continue;
            bestScore = score;
            best = at;
        }
        return best;
    }

private:
    static constexpr std::size_t slots = 8192;
    static constexpr std::size_t slotOf(std::uint32_t window) noexcept {
        return hashOf(window) / (largestFilterBits / slots);
    }

    std::array<std::uint16_t, slots> counts_{};
    std::array<std::uint8_t, 256> letters_{};
};

constexpr Window windowAt(std::string_view text, std::size_t phrase, std::size_t offset) noexcept {
    const bool inFront = offset + windowSize / 2 < text.size() / 2;
    const std::size_t checkOffset = inFront ? text.size() - windowSize : 0;
    return {foldedBytes(text, offset), foldedBytes(text, checkOffset),
            static_cast<std::uint16_t>(phrase), static_cast<std::uint8_t>(offset),
            static_cast<std::uint8_t>(checkOffset)};
}

/// What a matcher walks.
struct TableView {
    std::span<std::uint32_t> filter;  ///< filterBitsFor / 32
    /// Where the windows of each bucket begin; bucketsFor + 1.
    std::span<std::uint16_t> starts;
    std::span<Window> windows;  ///< stride for each phrase

    /// Fills the tables, which are zero before, for `texts`. `chosen` is room like `windows`.
    constexpr void fill(std::span<const std::string_view> texts, std::span<Window> chosen) const {
        const Rarity rarity(texts);
        const auto slotOf = [mask = filterBitsFor(windows.size()) - 1](const Window& window) {
            return static_cast<std::uint32_t>(hashOf(window.bytes) & mask);
        };
        for (std::size_t i = 0; i < chosen.size(); ++i) {
            const std::string_view text = texts[i / stride];
            chosen[i] = windowAt(text, i / stride, rarity.rarest(text, i % stride));
            const std::uint32_t hash = slotOf(chosen[i]);
            filter[hash / 32] |= std::uint32_t{1} << (hash % 32);
            ++starts[bucketOf(hash) + 1];
        }
        for (std::size_t i = 1; i < starts.size(); ++i) {
            starts[i] = static_cast<std::uint16_t>(starts[i] + starts[i - 1]);
        }
        // Each start moves on to the next one while its bucket fills, then back.
        for (const Window& window : chosen) {
            windows[starts[bucketOf(slotOf(window))]++] = window;
        }
        for (std::size_t i = starts.size() - 1; i > 0; --i) starts[i] = starts[i - 1];
        starts[0] = 0;
    }
};

/// The tables for `Count` phrases, made by the compiler.
template <std::size_t Count>
struct Tables {
    static constexpr std::size_t windowCount = Count * stride;
    static_assert(windowCount <= 0xFFFF, "more windows than places in them can be told");

    std::array<std::uint32_t, filterBitsFor(windowCount) / 32> filter{};
    std::array<std::uint16_t, bucketsFor(windowCount) + 1> starts{};
    std::array<Window, windowCount> windows{};

    explicit constexpr Tables(const std::array<std::string_view, Count>& texts) {
        std::array<Window, windowCount> chosen{};
        TableView{filter, starts, windows}.fill(texts, chosen);
    }
};

/// Refers to texts and the tables made for them, which must outlive it.
class Matcher {
public:
    template <class AnyTables>
    constexpr Matcher(Texts texts, const AnyTables& tables) noexcept
        : texts_(texts),
          filter_(tables.filter.data()),
          starts_(tables.starts.data()),
          windows_(tables.windows.data()),
          mask_(static_cast<std::uint32_t>(filterBitsFor(tables.windows.size()) - 1)) {}

    /// Goes over `text` and calls `onPlace.onFound(phrase, at)` for places of phrases
    /// that `onPlace.wants(phrase, at)` holds for, not in the order of the places.
    /// Every place of every phrase is asked for.
    template <class OnPlace>
    void scan(std::string_view text, OnPlace& onPlace) const {
        constexpr std::size_t block = 256;
        std::array<std::uint32_t, block> hashes;
        std::array<std::uint32_t, block> hits;
        for (std::size_t at = 0; at + windowSize <= text.size(); at += block * stride) {
            const std::size_t count = std::min(block, (text.size() - at - windowSize) / stride + 1);
            // Loops without a branch, the first of which the compiler turns into vector code. A
            // branch at each place, which nothing foretells, would cost more than looking for it.
            for (std::size_t i = 0; i < count; ++i) {
                hashes[i] = hashOf(loadFolded(text, at + i * stride)) & mask_;
            }
            std::size_t hitCount = 0;
            for (std::size_t i = 0; i < count; ++i) {
                hits[hitCount] = static_cast<std::uint32_t>(i);
                hitCount += filter_[hashes[i] / 32] >> (hashes[i] % 32) & 1;
            }
            for (const std::uint32_t i : std::span(hits).first(hitCount)) {
                verify(text, at + i * stride, hashes[i], onPlace);
            }
        }
    }

private:
    /// In the byte order of `foldedBytes`.
    static std::uint32_t loadFolded(std::string_view text, std::size_t at) noexcept {
        if constexpr (std::endian::native == std::endian::little) {
            std::uint32_t word;
            std::memcpy(&word, text.data() + at, sizeof word);
            return word | 0x20202020u;
        } else {
            return foldedBytes(text, at);
        }
    }

    template <class OnPlace>
    void verify(std::string_view text, std::size_t windowPlace, std::uint32_t hash,
                OnPlace& onPlace) const {
        const std::uint32_t bytes = loadFolded(text, windowPlace);
        const std::size_t bucket = bucketOf(hash);
        for (std::size_t i = starts_[bucket]; i < starts_[bucket + 1]; ++i) {
            const Window& window = windows_[i];
            if (window.bytes != bytes || windowPlace < window.offset) continue;
            const std::size_t at = windowPlace - window.offset;
            const std::size_t checkPlace = at + window.checkOffset;
            if (checkPlace + windowSize > text.size()) continue;
            if (loadFolded(text, checkPlace) != window.check) continue;
            const std::string_view phrase = texts_[window.phrase];
            if (phrase.size() > text.size() - at) continue;
            if (!onPlace.wants(window.phrase, at)) continue;
            if (!ascii::equalsNoCase(text.substr(at, phrase.size()), phrase)) continue;
            onPlace.onFound(window.phrase, at);
        }
    }

    Texts texts_;
    const std::uint32_t* filter_;
    const std::uint16_t* starts_;
    const Window* windows_;
    std::uint32_t mask_;
};

}  // namespace bouncecheck::phrases
