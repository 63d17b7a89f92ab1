#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace bouncecheck {

/// The line of `text` that the byte `at` is in, without its end.
inline std::string_view lineAt(std::string_view text, std::size_t at) noexcept {
    const std::size_t begin = text.substr(0, at).find_last_of("\r\n") + 1;
    return text.substr(begin, std::min(text.find_first_of("\r\n", at), text.size()) - begin);
}

}  // namespace bouncecheck
