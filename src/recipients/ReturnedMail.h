#pragma once

#include <string>
#include <string_view>

#include "mime/HeaderFields.h"

namespace bouncecheck {

/// The message that came back, as far as it concerns its recipients.
class ReturnedMail {
public:
    /// Reads the message, or the header, that `text` is; nothing of an empty text. Refers to the
    /// text.
    explicit ReturnedMail(std::string_view text);

    bool isFound() const noexcept { return isFound_; }
    /// All of it that there is.
    std::string_view text() const noexcept { return text_; }
    const HeaderFields& header() const noexcept { return header_; }
    /// Its recipient, where the header names one and no other; else "".
    std::string soleRecipient() const;
    /// Whether it is a notice itself: it came from no address.
    bool isNotice() const;

private:
    bool isFound_;
    std::string_view text_;
    HeaderFields header_;
};

}  // namespace bouncecheck
