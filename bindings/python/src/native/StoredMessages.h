#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

#include "ArrowColumn.h"
#include "tool/sources/MboxReader.h"

namespace bouncecheck::python {

/// The messages of a file, or those that begin within a stretch of it, as columns: `offset`, where
/// a message begins; `message`, null for what could not be read; `problem`, why it could not.
class StoredMessages {
public:
    struct Stretch {
        std::uint64_t begin = 0;
        std::uint64_t end = std::numeric_limits<std::uint64_t>::max();
    };

    /// `stream` begins where `streamStart` says, and has to outlive it.
    StoredMessages(InputStream& stream, std::size_t maxMessageSize, FileKind kind, Stretch stretch)
        : reader_(stream, maxMessageSize, kind, endInStream(stretch)),
          stretch_(stretch),
          streamStart_(startOfStream(stretch)) {}

    /// Where a stream has to begin, so that a message at the begin of the stretch is seen to stand
    /// behind a blank line.
    static std::uint64_t startOfStream(const Stretch& stretch) noexcept;

    /// The next messages: at most `mostRows`, and no more behind `mostBytes` of them. Nothing at
    /// the end.
    std::optional<ArrowColumn> next(std::size_t mostRows, std::size_t mostBytes);

private:
    /// Of a stretch that may begin within a message.
    static std::uint64_t endInStream(const Stretch& stretch) noexcept {
        return stretch.begin == 0 ? MboxReader::noEnd : stretch.end - startOfStream(stretch);
    }
    bool addNext(ArrowColumn& rows);

    MboxReader reader_;
    Stretch stretch_;
    std::uint64_t streamStart_;
    bool atEnd_ = false;
};

/// Whether a file with this path, which begins with `first`, can be read by stretches: a mailbox
/// that is not compressed and whose lines end in LF or CRLF.
bool canBeDivided(std::string_view path, std::string_view first) noexcept;

}  // namespace bouncecheck::python
