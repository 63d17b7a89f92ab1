#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <bouncecheck/Export.h>

namespace bouncecheck {

class Entity;
struct MessageContent;

/// A message that was parsed once, for a verdict, its facts and its fields.
///
/// Made from the bytes of a message as a mail server delivers it (RFC 5322), with LF or
/// CRLF line ends; a "From " line of a mailbox, a byte order mark and blank lines before the
/// header are skipped. No bytes are refused: a text that is no message has no fields. One
/// thread at a time; distinct messages are independent. A message that was moved from can
/// only be destroyed or assigned to.
class BOUNCECHECK_EXPORT Message {
public:
    /// Copies the bytes.
    explicit Message(std::string_view bytes);
    /// Takes the bytes over.
    explicit Message(std::string&& bytes);
    /// Copies the bytes up to the NUL; null reads as "".
    explicit Message(const char* bytes);
    Message(Message&& other) noexcept;
    Message& operator=(Message&& other) noexcept;
    ~Message();

    /// The first header field of that name, in any letter case: unfolded, trimmed, with
    /// encoded words (RFC 2047) decoded, in UTF-8; "" when there is none. See Limits.h for how long
    /// a value may be.
    std::string field(std::string_view name) const;

private:
    friend const Entity& entityOf(const Message& message) noexcept;
    friend const MessageContent& contentOf(const Message& message) noexcept;

    std::unique_ptr<const MessageContent> content_;
};

}  // namespace bouncecheck
