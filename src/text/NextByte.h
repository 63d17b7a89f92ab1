#pragma once

#include <cstddef>
#include <string_view>

namespace bouncecheck {

/// The next place of one byte in a text, for positions that only grow: what was
/// found, or that nothing is left, is remembered, so no stretch is scanned twice.
class NextByte {
public:
    NextByte(std::string_view text, char byte) noexcept : text_(text), byte_(byte) {}

    std::size_t atOrAfter(std::size_t from) noexcept {
        if (next_ != std::string_view::npos && (!known_ || next_ < from)) {
            next_ = text_.find(byte_, from);
            known_ = true;
        }
        return next_;
    }

private:
    std::string_view text_;
    char byte_;
    bool known_ = false;
    std::size_t next_ = 0;
};

}  // namespace bouncecheck
