#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

namespace bouncecheck::phrases {

/// Where a text begins among packed ones, and how long it is, in bytes.
struct TextPlace {
    std::uint32_t start = 0;
    std::uint32_t length = 0;
};

/// Texts that are packed somewhere, by their number.
class Texts {
public:
    constexpr Texts(const char* bytes, std::span<const TextPlace> places) noexcept
        : bytes_(bytes), places_(places) {}

    constexpr std::string_view operator[](std::size_t number) const noexcept {
        return {bytes_ + places_[number].start, places_[number].length};
    }
    constexpr std::size_t size() const noexcept { return places_.size(); }

private:
    const char* bytes_;
    std::span<const TextPlace> places_;
};

/// The texts of rows one behind the other, each with a NUL behind it as literals have, made by the
/// compiler. They hold no pointers: thousands of these would have to be relocated whenever the
/// program starts, which takes longer than classifying a message.
template <std::size_t Count, std::size_t Size>
struct PackedTexts {
    std::array<char, Size> bytes{};
    std::array<TextPlace, Count> places{};

    /// `textOf` is what has the text of a row: a member, say.
    constexpr PackedTexts(const auto& rows, auto textOf) {
        std::uint32_t start = 0;
        for (std::size_t i = 0; i < Count; ++i) {
            const std::string_view text = std::invoke(textOf, rows[i]);
            places[i] = {start, static_cast<std::uint32_t>(text.size())};
            std::copy_n(text.data(), text.size(), bytes.data() + start);
            start += places[i].length + 1;
        }
    }

    constexpr Texts all() const noexcept { return {bytes.data(), places}; }
};

/// How many bytes the packed texts of `rows` take.
constexpr std::size_t packedSize(const auto& rows, auto textOf) {
    std::size_t size = 0;
    for (const auto& row : rows) size += std::invoke(textOf, row).size() + 1;
    return size;
}

}  // namespace bouncecheck::phrases
