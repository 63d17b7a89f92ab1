#pragma once

#include <cstddef>
#include <string_view>

#include "text/Search.h"

namespace bouncecheck {

/// The reply of another system, which some only introduce: "Unknown address error 550-'No such
/// user'". What they call it is the same for any reply.
struct InnerReply {
    /// Up to its end, with what stands in front of it.
    std::string_view text{};
    /// What stands in front of the introduction.
    std::string_view front{};
    /// Where it begins: at its code, or behind the quote that follows the code; `npos` for none.
    std::size_t at = npos;
    /// The code in front of that quote; "" where it begins with its code.
    std::string_view quotedCode{};
    bool inNotice = false;

    bool isFound() const noexcept { return at != npos; }
};

/// That of `reply`, or that of `notice` where `reply` has the introduction alone. Linear.
InnerReply innerReplyOf(std::string_view reply, std::string_view notice);

}  // namespace bouncecheck
