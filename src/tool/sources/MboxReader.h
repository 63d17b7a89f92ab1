#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "tool/sources/InputStream.h"

namespace bouncecheck {

/// Hands out the messages of a file: those of a mailbox (mboxo, mboxrd, mboxcl,
/// mboxcl2), or the one that the file is.
///
/// A file is a mailbox when it begins with an envelope. A message of a mailbox
/// ends before a blank line and an envelope, or where its Content-Length says, if
/// such an end is there. ">From " at the start of a line loses a '>', unless the
/// length shows that the mailbox quotes nothing. An empty file holds no message,
/// and a truncated one ends in what there is.
///
/// Holds one message at a time; where lengths lie, as much as they promise, which
/// stays within a few times the limit.
class MboxReader {
public:
    struct Message {
        /// Without envelope; empty when it was too large.
        std::string bytes;
        /// From 1.
        std::uint64_t index = 0;
        bool tooLarge = false;
    };

    /// `maxMessageSize` is in bytes. `mayBeMailbox` is false where a file is one
    /// message whatever it begins with.
    MboxReader(InputStream& stream, std::size_t maxMessageSize, bool mayBeMailbox = true)
        : stream_(stream), maxMessageSize_(maxMessageSize), mayBeMailbox_(mayBeMailbox) {}

    /// The next message, or nothing at the end. Throws what the stream throws.
    std::optional<Message> next();

    /// Whether the file is a mailbox; known once there was a message.
    bool isMailbox() const noexcept { return isMailbox_; }

private:
    Message nextOfMailbox();
    std::optional<Message> wholeFile();
    std::string_view unread() const noexcept { return std::string_view(buffer_).substr(start_); }
    bool fill();
    bool fillTo(std::size_t size);
    bool endsBehind(std::size_t end, std::size_t& next);
    std::optional<std::size_t> endByLength(std::size_t& next);
    /// Where the next envelope begins; npos when none does before the end of the
    /// file or in about `maxSize` bytes.
    std::size_t findEnvelope(std::size_t maxSize);
    void skipMessage();

    InputStream& stream_;
    std::size_t maxMessageSize_;
    bool mayBeMailbox_;
    /// What was read and not handed out yet begins at `start_`.
    std::string buffer_;
    std::size_t start_ = 0;
    bool atEnd_ = false;
    std::uint64_t count_ = 0;
    bool isMailbox_ = false;
};

}  // namespace bouncecheck
