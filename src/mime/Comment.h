#pragma once

#include <cstddef>
#include <string_view>

namespace bouncecheck {

/// The length of the comment (RFC 5322, section 3.2.2) that begins `text`, which
/// starts with '(', those nested in it included; npos when it is never closed.
constexpr std::size_t commentLength(std::string_view text) noexcept {
    std::size_t depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\') {
            ++i;
        } else if (text[i] == '(') {
            ++depth;
        } else if (text[i] == ')' && --depth == 0) {
            return i + 1;
        }
    }
    return std::string_view::npos;
}

}  // namespace bouncecheck
