#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace bouncecheck {

/// A set of bytes, asked with one look-up for any number of them.
class ByteSet {
public:
    explicit constexpr ByteSet(std::string_view bytes) noexcept {
        for (const char c : bytes) add(c);
    }

    constexpr void add(char c) noexcept { holds_[static_cast<unsigned char>(c)] = true; }

    constexpr bool contains(char c) const noexcept { return holds_[static_cast<unsigned char>(c)]; }

private:
    std::array<bool, 256> holds_{};
};

/// The bytes for which `holds` is true.
constexpr ByteSet bytesWhere(bool (*holds)(char)) {
    ByteSet set("");
    for (int byte = 0; byte < 256; ++byte) {
        if (holds(static_cast<char>(byte))) set.add(static_cast<char>(byte));
    }
    return set;
}

/// How many bytes of `text` stand before the first of `set`; all when there is none. Over
/// stretches of text, `find_first_of` takes several times as long.
constexpr std::size_t lengthBefore(const ByteSet& set, std::string_view text) noexcept {
    const auto end = std::ranges::find_if(text, [&](char c) { return set.contains(c); });
    return static_cast<std::size_t>(end - text.begin());
}

/// How many bytes at the start of `text` are of `set`.
constexpr std::size_t lengthOf(const ByteSet& set, std::string_view text) noexcept {
    const auto end = std::ranges::find_if_not(text, [&](char c) { return set.contains(c); });
    return static_cast<std::size_t>(end - text.begin());
}

}  // namespace bouncecheck
