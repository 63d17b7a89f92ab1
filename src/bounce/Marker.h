#pragma once

#include <string_view>

namespace bouncecheck {

/// An entry of BounceDataMarkers, taken apart.
struct Marker {
    std::string_view text;
    /// Has to stand in the text too; empty when the entry has none.
    std::string_view context;
    /// Whether the marker counts behind the context only.
    bool afterContext = false;

    constexpr Marker() = default;
    explicit constexpr Marker(std::string_view entry) noexcept : text(entry) {
        if (!entry.starts_with('[')) return;
        const bool isDouble = entry.starts_with("[[");
        text.remove_prefix(isDouble ? 2 : 1);
        const std::size_t end = text.find(']');
        if (end == std::string_view::npos) return;
        context = text.substr(0, end);
        text.remove_prefix(end + 1);
        afterContext = isDouble;
    }
};

}  // namespace bouncecheck
