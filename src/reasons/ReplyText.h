#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace bouncecheck {

/// A part of a text.
struct TextPart {
    std::size_t at = 0;
    std::size_t length = 0;
};

/// A reply as the table of phrases has it, so that a phrase is found however the reply was
/// folded, continued or typeset: each stretch of white space is one blank, and a blank line a line
/// end behind it, since no phrase goes on in the next paragraph; codes that begin a line of a reply
/// or continue one are absent ("550-5.1.1 No such", "550 5.1.1 user"), as are marks of quoting at
/// the start of a line; an address is "@", in brackets or not; typographic apostrophes are plain,
/// Latin letters have no accents, and Cyrillic ones are small. (ASCII letters stay: the search
/// ignores their case.) Linear in the size of the text, which it refers to.
class ReplyText {
public:
    explicit ReplyText(std::string_view text);

    std::string_view view() const noexcept { return plain_; }
    /// Where a part of `view` stands in the text.
    TextPart inText(TextPart part) const;

private:
    std::string_view text_;
    std::string plain_;
};

}  // namespace bouncecheck
