#include "tool/sources/MboxReader.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "text/Ascii.h"
#include "text/ByteSet.h"
#include "text/NextByte.h"
#include "text/Search.h"
#include "tool/sources/Envelope.h"

namespace bouncecheck {
namespace {

constexpr std::size_t chunkSize = std::size_t{1} << 16;
constexpr std::size_t smallestRoom = 4096;

/// The first line of `text`, without its end; cut where it is longer than any envelope.
std::string_view firstLine(std::string_view text, char lineEnd) noexcept {
    text = text.substr(0, longestEnvelope + 2);
    const std::string_view line = text.substr(0, text.find(lineEnd));
    return line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
}

bool beginsWithEnvelope(std::string_view text, char lineEnd) noexcept {
    return isEnvelope(firstLine(text, lineEnd));
}

/// The length of the line end that `text` begins with, or 0.
std::size_t lineEndLength(std::string_view text, char lineEnd) noexcept {
    return text.starts_with(lineEnd) ? 1 : text.starts_with("\r\n") ? 2 : 0;
}

/// `text` without a line end that it ends in.
std::string_view withoutLineEnd(std::string_view text, char lineEnd) noexcept {
    if (text.ends_with(lineEnd)) text.remove_suffix(1);
    if (lineEnd == '\n' && text.ends_with('\r')) text.remove_suffix(1);
    return text;
}

/// `text` without the blank line that mailboxes put behind each message.
std::string_view withoutBlankLine(std::string_view text, char lineEnd) noexcept {
    const std::string_view shorter = withoutLineEnd(text, lineEnd);
    return shorter.empty() || shorter.ends_with(lineEnd) ? shorter : text;
}

/// Where "From " stands behind `before` in `text`, from `at` on.
std::size_t findFrom(std::string_view text, char before, std::size_t at) noexcept {
    // Most of what is read is passed over here.
    for (at -= std::min<std::size_t>(at, 1); (at = findPair(text, before, 'F', at)) != npos; ++at) {
        if (text.substr(at + 1).starts_with("From ")) return at + 1;
    }
    return npos;
}

/// `text` with one '>' less before each "From " that begins a line behind them.
std::string unquoted(std::string_view text, char lineEnd) {
    std::string out;
    std::size_t copied = 0;
    for (std::size_t at = 0; (at = findFrom(text, '>', at)) != npos; ++at) {
        std::size_t start = at;
        while (start > copied && text[start - 1] == '>') --start;
        if (start > 0 && text[start - 1] != lineEnd) continue;
        if (copied == 0) out.reserve(text.size());
        out += text.substr(copied, at - 1 - copied);
        copied = at;
    }
    if (copied == 0) return std::string(text);
    out += text.substr(copied);
    return out;
}

bool hasBareFromLine(std::string_view text, char lineEnd) noexcept {
    return text.starts_with("From ") || findFrom(text, lineEnd, 0) != npos;
}

/// The length of the header of `text`, the blank line included; npos when its end is
/// not in sight. `searched`, which begins as 0, spares the next call what was searched.
std::size_t headerLength(std::string_view text, char lineEnd, std::size_t& searched) noexcept {
    const std::size_t blankInFront = searched == 0 ? lineEndLength(text, lineEnd) : 0;
    if (blankInFront > 0 || text.size() < 2) return blankInFront > 0 ? blankInFront : npos;
    NextByte ends(text, lineEnd);
    for (std::size_t at = searched; (at = ends.atOrAfter(at)) != npos; ++at) {
        const std::size_t blank = lineEndLength(text.substr(at + 1), lineEnd);
        if (blank > 0) return at + 1 + blank;
    }
    searched = text.size() - 2;  // a blank line may have begun there
    return npos;
}

/// The fields of a header, each with its continuation lines.
class Fields {
public:
    Fields(std::string_view header, char lineEnd) noexcept
        : header_(header), lineEnds_(header, lineEnd) {}

    /// The next one; "" behind the last one.
    std::string_view next() noexcept {
        const std::size_t start = end_;
        while (end_ < header_.size()) {
            end_ = std::min(lineEnds_.atOrAfter(end_), header_.size() - 1) + 1;
            if (end_ < header_.size() && !ascii::isBlank(header_[end_])) break;
        }
        return header_.substr(start, end_ - start);
    }

private:
    std::string_view header_;
    NextByte lineEnds_;
    std::size_t end_ = 0;
};

/// The Content-Length in `header`; nothing when none is there, when it is no number or
/// when several disagree.
std::optional<std::size_t> contentLength(std::string_view header, char lineEnd) noexcept {
    constexpr std::string_view name = "content-length";
    std::optional<std::size_t> length;
    Fields fields(header, lineEnd);
    for (std::string_view field; !(field = fields.next()).empty();) {
        if (!ascii::startsWithNoCase(field, name)) continue;
        field = ascii::trimLeft(field.substr(name.size()));
        if (!field.starts_with(':')) continue;
        const std::string_view value = ascii::trim(field.substr(1));
        std::size_t number = 0;
        const auto [end, error] =
            std::from_chars(value.data(), value.data() + value.size(), number);
        const bool isNumber = error == std::errc() && end == value.data() + value.size();
        if (!isNumber || (length && *length != number)) return std::nullopt;
        length = number;
    }
    return length;
}

}  // namespace

/// Reads another piece behind what is there; false at the end.
bool MboxReader::fill() {
    if (atEnd_) return false;
    // Moved only when that frees half of it: each byte moves a few times at most.
    if (start_ > buffer_.size() / 2) {
        buffer_.erase(0, start_);
        bufferAt_ += std::exchange(start_, 0);
    }
    const std::size_t size = buffer_.size();
    // A small file gets a small buffer: it is handed out with the message.
    const auto room = static_cast<std::size_t>(
        std::min<std::uint64_t>(stream_.sizeLeft().value_or(chunkSize), chunkSize));
    if (buffer_.capacity() < size + room) {
        buffer_.reserve(std::max(size + room, size + size / 2));
    }
    buffer_.resize(size + room);
    std::size_t count = 0;
    try {
        count = stream_.read(std::span(buffer_).subspan(size));
    } catch (const ReadError& error) {
        damage_ = error;
    }
    buffer_.resize(size + count);
    atEnd_ = count == 0;
    return !atEnd_;
}

/// Reads until `size` bytes are there; false when the file has fewer.
bool MboxReader::fillTo(std::size_t size) {
    while (unread().size() < size) {
        if (!fill()) return false;
    }
    return true;
}

std::optional<MboxReader::Message> MboxReader::next() {
    if (!hasBegun_) begin();
    auto message = isMailbox_ ? nextOfMailbox() : wholeFile();
    if (!message && damage_) throw ReadError(*std::exchange(damage_, std::nullopt));
    return message;
}

/// Decides what the file is, and passes over what stands before its first message.
void MboxReader::begin() {
    hasBegun_ = true;
    fillTo(longestEnvelope + 2);
    // Where the first line ends in a bare CR, so do the others.
    constexpr ByteSet lineEndBytes("\r\n");
    const std::string_view first = unread().substr(0, longestEnvelope + 1);
    const std::size_t end = lengthBefore(lineEndBytes, first);
    const bool hasBareCr = end < first.size() && lineEndLength(unread().substr(end), '\n') == 0;
    const bool isPart = kind_ == FileKind::mailboxPart;
    if (hasBareCr && !isPart && beginsWithEnvelope(unread(), '\r')) lineEnd_ = '\r';
    const bool hasEnvelope = beginsWithEnvelope(unread(), lineEnd_);
    isMailbox_ =
        kind_ == FileKind::mailbox || isPart || (kind_ == FileKind::byContent && hasEnvelope);
    if (!isMailbox_) {
        if (hasEnvelope) skipEnvelope();
        return;
    }
    while (const std::size_t blank = lineEndLength(unread(), lineEnd_)) {
        start_ += blank;
        fillTo(2);
    }
}

void MboxReader::skipEnvelope() {
    const std::size_t line = unread().find(lineEnd_);
    start_ += line == npos ? unread().size() : line + 1;
}

/// The file as one message.
std::optional<MboxReader::Message> MboxReader::wholeFile() {
    const bool mayBeEmpty = kind_ == FileKind::message && !damage_;
    if (count_ > 0 || (unread().empty() && !mayBeEmpty)) return std::nullopt;
    Message message;
    message.index = ++count_;
    const auto left = stream_.sizeLeft();
    message.tooLarge =
        (left && unread().size() + *left > maxMessageSize_) || fillTo(maxMessageSize_ + 1);
    if (!message.tooLarge) message.bytes = takeUnread();
    return message;
}

/// All that is unread, in storage that is not much larger.
std::string MboxReader::takeUnread() {
    const bool hasMuchRoom = buffer_.capacity() / 2 > unread().size() + smallestRoom;
    if (hasMuchRoom) return std::string(unread());
    buffer_.erase(0, std::exchange(start_, 0));
    return std::exchange(buffer_, {});
}

std::optional<MboxReader::Message> MboxReader::nextOfMailbox() {
    fillTo(longestEnvelope + 2);
    if (unread().empty()) return std::nullopt;
    Message message;
    message.index = ++count_;
    message.offset = bufferAt_ + start_;
    // Only the first message can be without.
    message.hasEnvelope = count_ > 1 || beginsWithEnvelope(unread(), lineEnd_);
    if (message.hasEnvelope) skipEnvelope();
    if (partEnd_ != noEnd && !message.hasEnvelope) {
        return skipRest() ? std::optional(std::move(message)) : std::nullopt;
    }

    std::size_t next = 0;
    if (const auto end = endByLength(next)) {
        const std::string_view text = unread().substr(0, *end);
        message.bytes =
            hasBareFromLine(text, lineEnd_) ? std::string(text) : unquoted(text, lineEnd_);
    } else {
        next = findEnvelope(maxMessageSize_);
        if (next == npos && !atEnd_) {
            message.tooLarge = true;
            skipMessage();
            return message;
        }
        next = std::min(next, unread().size());
        const std::string_view text = withoutBlankLine(unread().substr(0, next), lineEnd_);
        message.tooLarge = text.size() > maxMessageSize_;
        if (!message.tooLarge) message.bytes = unquoted(text, lineEnd_);
    }
    start_ += next;
    return message;
}

/// Whether the message may end at `end`: nothing follows but a blank line, or that
/// and an envelope, which begins at `next`.
bool MboxReader::endsBehind(std::size_t end, std::size_t& next) {
    fillTo(end + 2 + longestEnvelope + 2);
    const std::string_view text = unread();
    if (end > text.size()) return false;
    next = end + lineEndLength(text.substr(end), lineEnd_);
    const bool isLineStart = next > 0 && text[next - 1] == lineEnd_;
    return next == text.size() || (isLineStart && beginsWithEnvelope(text.substr(next), lineEnd_));
}

/// The end of the message by its Content-Length, if one is there.
std::optional<std::size_t> MboxReader::endByLength(std::size_t& next) {
    // Real headers are far shorter; what is longer is scanned as any text.
    constexpr std::size_t longestHeader = std::size_t{1} << 20;
    if (kind_ == FileKind::mailboxPart) return std::nullopt;
    std::size_t searched = 0;
    std::size_t header = headerLength(unread(), lineEnd_, searched);
    while (header == npos && unread().size() < longestHeader && fill()) {
        header = headerLength(unread(), lineEnd_, searched);
    }
    if (header == npos) return std::nullopt;
    const auto length = contentLength(unread().substr(0, header), lineEnd_);
    if (!length || *length > maxMessageSize_ || header > maxMessageSize_ - *length) {
        return std::nullopt;
    }
    const std::size_t end = header + *length;
    return endsBehind(end, next) ? std::optional(end) : std::nullopt;
}

std::size_t MboxReader::findEnvelope(std::size_t maxSize) {
    constexpr std::size_t partOfMark = std::string_view("From ").size() - 1;
    for (std::size_t at = 0;;) {
        const std::size_t found = findFrom(unread(), lineEnd_, at);
        if (found == npos) {
            at = std::max(at, unread().size() - std::min(unread().size(), partOfMark));
            if (unread().size() > maxSize + chunkSize || !fill()) return npos;
            continue;
        }
        at = found + 1;
        fillTo(found + longestEnvelope + 2);
        const std::string_view before = withoutLineEnd(unread().substr(0, found), lineEnd_);
        const bool behindBlankLine = before.empty() || before.ends_with(lineEnd_);
        if (behindBlankLine && beginsWithEnvelope(unread().substr(found), lineEnd_)) return found;
    }
}

/// Passes over a message that is larger than the buffer may grow.
void MboxReader::skipMessage() {
    // What stays is enough to see a blank line and the mark behind it.
    constexpr std::size_t overlap = 16;
    std::size_t found = npos;
    while (found == npos && !atEnd_ && bufferAt_ + start_ < partEnd_) {
        const std::size_t size = unread().size();
        start_ += size - std::min(size, overlap);
        found = findEnvelope(chunkSize);
    }
    start_ = found == npos ? buffer_.size() : start_ + found;
}

/// Passes over what belongs to a message that began before the part; false when no other one
/// begins in the part.
bool MboxReader::skipRest() {
    const std::size_t found = findEnvelope(chunkSize);
    if (found == npos) {
        skipMessage();
    } else {
        start_ += found;
    }
    return bufferAt_ + start_ < partEnd_ && !unread().empty();
}

}  // namespace bouncecheck
