#pragma once

#include <cstddef>
#include <string_view>

#include "text/NextByte.h"

namespace bouncecheck {

/// The next line end of a text with CRLF line ends, for positions that only grow. Over many lines
/// it takes less time than `findCrLf`.
class NextCrLf {
public:
    explicit NextCrLf(std::string_view text) noexcept : text_(text), lineFeeds_(text, '\n') {}

    /// The first CRLF at or after `from`, or npos.
    std::size_t atOrAfter(std::size_t from) noexcept {
        for (std::size_t at = from; (at = lineFeeds_.atOrAfter(at)) != std::string_view::npos;
             ++at) {
            if (at > from && text_[at - 1] == '\r') return at - 1;
        }
        return std::string_view::npos;
    }

private:
    std::string_view text_;
    NextByte lineFeeds_;
};

}  // namespace bouncecheck
