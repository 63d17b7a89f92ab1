#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

namespace bouncecheck {

/// Texts by number, each kept once; "" is number 0. A failed allocation changes nothing.
class SharedTexts {
public:
    /// The number of `text`, cut to `mostBytes` before an ellipsis.
    std::size_t add(std::string_view text, std::size_t mostBytes);
    /// The elements of a JSON array behind that of ""; each begins with a comma, and what
    /// is not UTF-8 appears as U+FFFD.
    std::string_view json() const noexcept { return json_; }
    /// Of the texts themselves.
    std::size_t bytes() const noexcept { return bytes_; }
    void clear() noexcept;

private:
    std::unordered_map<std::string, std::size_t> numbers_;
    std::string json_;
    std::size_t bytes_ = 0;
};

}  // namespace bouncecheck
