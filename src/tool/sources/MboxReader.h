#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "tool/sources/FileKind.h"
#include "tool/sources/InputStream.h"

namespace bouncecheck {

/// Hands out the messages of a file: those of a mailbox (mboxo, mboxrd, mboxcl,
/// mboxcl2; RFC 4155), or the one that the file is.
///
/// Which of them the file is follows from its kind. A message of a mailbox ends before
/// a blank line and an envelope, or where its Content-Length says, if such an end is
/// there. ">From " at the start of a line loses a '>', unless the length shows that
/// the mailbox quotes nothing. An envelope in front of a single message is left out,
/// and nothing else of it is changed. Lines end in LF or CRLF; in a bare CR where
/// the first envelope does. What stands before the first envelope of a part of a mailbox is
/// handed out as a message, too: an empty one where the part may begin within it.
///
/// An empty file holds no message unless it is known to be one, and a truncated one
/// ends in what there is. Time is linear in the size of the file. Holds one message at
/// a time; where lengths lie, as much as they promise, which stays within a few times
/// the limit.
class MboxReader {
public:
    struct Message {
        /// Without envelope; empty when it was too large.
        std::string bytes;
        /// From 1.
        std::uint64_t index = 0;
        /// Where it begins in the stream, its envelope included.
        std::uint64_t offset = 0;
        /// Whether an envelope stood in front of it, as of all but the first of a mailbox.
        bool hasEnvelope = false;
        bool tooLarge = false;
    };

    static constexpr std::uint64_t noEnd = std::numeric_limits<std::uint64_t>::max();

    /// `maxMessageSize` is in bytes. `partEnd` is for a part of a mailbox that may begin within a
    /// message: where in the stream it ends. What goes on behind that is not passed over.
    MboxReader(InputStream& stream, std::size_t maxMessageSize, FileKind kind = FileKind::byContent,
               std::uint64_t partEnd = noEnd)
        : stream_(stream), maxMessageSize_(maxMessageSize), kind_(kind), partEnd_(partEnd) {}

    /// The next message, or nothing at the end. Throws what the stream throws; a
    /// ReadError only after all that was read before it has been handed out.
    std::optional<Message> next();

    /// Whether the file is a mailbox; known after the first call of `next`.
    bool isMailbox() const noexcept { return isMailbox_; }

private:
    void begin();
    void skipEnvelope();
    std::optional<Message> nextOfMailbox();
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
    bool skipRest();
    std::string takeUnread();

    InputStream& stream_;
    std::size_t maxMessageSize_;
    FileKind kind_;
    std::uint64_t partEnd_;
    /// What was read and not handed out yet begins at `start_`.
    std::string buffer_;
    std::size_t start_ = 0;
    /// Where the buffer begins in the stream.
    std::uint64_t bufferAt_ = 0;
    bool atEnd_ = false;
    /// Why the stream ended too early; reported after the last message.
    std::optional<ReadError> damage_;
    std::uint64_t count_ = 0;
    bool hasBegun_ = false;
    bool isMailbox_ = false;
    /// The last byte of each line end.
    char lineEnd_ = '\n';
};

}  // namespace bouncecheck
