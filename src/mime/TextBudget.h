#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include <bouncecheck/Limits.h>

namespace bouncecheck {

/// How much text what is read of one message may still take.
class TextBudget {
public:
    explicit TextBudget(std::size_t bytes = limits::facts) noexcept : left_(bytes) {}

    /// Whether there is room for `bytes`. Once there is not, there is none for anything.
    bool spend(std::size_t bytes) noexcept {
        isSpent_ = isSpent_ || bytes > left_;
        if (!isSpent_) left_ -= bytes;
        return !isSpent_;
    }
    bool isSpent() const noexcept { return isSpent_; }

    /// `text`, or "" when there is no room for it: part of an address is another one.
    std::string keep(std::string_view text) {
        return spend(text.size()) ? std::string(text) : std::string();
    }
    std::string keep(std::string&& text) {
        return spend(text.size()) ? std::move(text) : std::string();
    }

private:
    std::size_t left_;
    bool isSpent_ = false;
};

}  // namespace bouncecheck
