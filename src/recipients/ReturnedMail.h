#pragma once

#include <string>
#include <string_view>

#include "mime/HeaderFields.h"

namespace bouncecheck {

class Entity;
class Notice;

/// The message that came back, as far as it concerns its recipients.
struct ReturnedMail {
    bool isFound = false;
    /// All of it that there is; refers into the text that it was read from.
    std::string_view text;
    HeaderFields header;
    /// Its recipient, where the header names one and no other; else "".
    std::string soleRecipient;
    /// Whether it is a notice itself: it came from no address.
    bool isNotice = false;
};

/// Reads the message, or the header, that `text` is; nothing of an empty text.
ReturnedMail readReturnedMail(std::string_view text);

/// The first message or header attached to `message`.
ReturnedMail attachedMail(const Entity& message);

/// The same, or else the one that stands in the text of its notice.
ReturnedMail returnedMailOf(const Entity& message, const Notice& notice);

}  // namespace bouncecheck
