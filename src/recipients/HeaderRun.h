#pragma once

#include <cstddef>
#include <string_view>

namespace bouncecheck {

/// The name of the header field that `line` begins, or "".
std::string_view fieldName(std::string_view line);

/// Recognises the header of a message in a text, line by line: three fields in a row, one of
/// which only messages have.
class HeaderRun {
public:
    /// Takes the next line; whether it is a field, or the fold of one.
    bool take(std::string_view line);

    bool isMessage() const noexcept { return fields_ >= 3 && ofMessage_; }
    /// How many lines there are from the first field on.
    std::size_t lines() const noexcept { return lines_; }

private:
    std::size_t fields_ = 0;
    std::size_t lines_ = 0;
    bool ofMessage_ = false;
};

}  // namespace bouncecheck
