#include "tool/sources/MboxReader.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "text/Ascii.h"
#include "text/Search.h"
#include "tool/sources/Envelope.h"

namespace bouncecheck {
namespace {

constexpr std::size_t chunkSize = std::size_t{1} << 16;

std::string_view firstLine(std::string_view text) noexcept {
    const std::string_view line = text.substr(0, text.find('\n'));
    return line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
}

/// The length of the line end that `text` begins with, or 0.
std::size_t lineEndLength(std::string_view text) noexcept {
    return text.starts_with("\r\n") ? 2 : text.starts_with('\n') ? 1 : 0;
}

/// `text` without a line end that it ends in.
std::string_view withoutLineEnd(std::string_view text) noexcept {
    if (text.ends_with('\n')) text.remove_suffix(1);
    if (text.ends_with('\r')) text.remove_suffix(1);
    return text;
}

/// `text` without the blank line that mailboxes put behind each message.
std::string_view withoutBlankLine(std::string_view text) noexcept {
    const std::string_view shorter = withoutLineEnd(text);
    return shorter.empty() || shorter.ends_with('\n') ? shorter : text;
}

/// Where "From " stands in `text`, from `at` on.
std::size_t findFrom(std::string_view text, std::size_t at) noexcept {
    // By its first letter, which is rare: most of what is read is passed over here.
    while ((at = text.find('F', at)) != npos && !text.substr(at).starts_with("From ")) ++at;
    return at;
}

/// `text` with one '>' less before each "From " that begins a line behind them.
std::string unquoted(std::string_view text) {
    std::string out;
    std::size_t copied = 0;
    for (std::size_t at = 0; (at = findFrom(text, at)) != npos; ++at) {
        std::size_t start = at;
        while (start > copied && text[start - 1] == '>') --start;
        if (start == at || (start > 0 && text[start - 1] != '\n')) continue;
        out += text.substr(copied, at - 1 - copied);
        copied = at;
    }
    if (copied == 0) return std::string(text);
    return out += text.substr(copied);
}

bool hasBareFromLine(std::string_view text) noexcept {
    return text.starts_with("From ") || contains(text, "\nFrom ");
}

/// The length of the header of `text`, the blank line included; npos when its
/// end is not in sight.
std::size_t headerLength(std::string_view text) noexcept {
    for (std::size_t at = 0; (at = text.find('\n', at)) != npos;) {
        ++at;
        const std::size_t blank = lineEndLength(text.substr(at));
        if (blank > 0) return at + blank;
    }
    return npos;
}

std::optional<std::size_t> contentLength(std::string_view header) {
    constexpr std::string_view name = "\ncontent-length:";
    const std::size_t at = findBytesNoCase(header, name);
    if (at == npos) return std::nullopt;
    const std::string_view value = ascii::trim(firstLine(header.substr(at + name.size())));
    std::size_t length = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), length);
    const bool isNumber = error == std::errc() && end == value.data() + value.size();
    return isNumber ? std::optional(length) : std::nullopt;
}

}  // namespace

/// Reads another piece behind what is there; false at the end.
bool MboxReader::fill() {
    if (atEnd_) return false;
    // Moved only when that frees half of it: each byte moves a few times at most.
    if (start_ > buffer_.size() / 2) {
        buffer_.erase(0, start_);
        start_ = 0;
    }
    const std::size_t size = buffer_.size();
    // A small file gets a small buffer: it is handed out with the message.
    constexpr std::size_t smallest = 4096;
    const std::uint64_t left = stream_.sizeLeft().value_or(chunkSize) + 1;
    const std::size_t room = std::clamp<std::size_t>(left, smallest, chunkSize);
    if (buffer_.capacity() < size + room) {
        buffer_.reserve(std::max(size + room, size + size / 2));
    }
    buffer_.resize(size + room);
    const std::size_t count = stream_.read(std::span(buffer_).subspan(size));
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
    if (count_ == 0) {
        fillTo(longestEnvelope + 2);
        isMailbox_ = mayBeMailbox_ && isEnvelope(firstLine(unread()));
        if (!isMailbox_) return wholeFile();
    }
    if (!isMailbox_) return std::nullopt;
    fillTo(1);
    if (unread().empty()) return std::nullopt;
    return nextOfMailbox();
}

/// The file as one message.
std::optional<MboxReader::Message> MboxReader::wholeFile() {
    if (mayBeMailbox_ && unread().empty()) return std::nullopt;
    Message message;
    message.index = ++count_;
    const auto left = stream_.sizeLeft();
    message.tooLarge =
        (left && unread().size() + *left > maxMessageSize_) || fillTo(maxMessageSize_ + 1);
    if (!message.tooLarge) message.bytes = std::exchange(buffer_, {});
    return message;
}

/// The message whose envelope what is unread begins with.
MboxReader::Message MboxReader::nextOfMailbox() {
    fillTo(longestEnvelope + 2);
    const std::size_t line = unread().find('\n');
    start_ += line == npos ? unread().size() : line + 1;

    Message message;
    message.index = ++count_;
    std::size_t next = 0;
    if (const auto end = endByLength(next)) {
        const std::string_view text = unread().substr(0, *end);
        message.bytes = hasBareFromLine(text) ? std::string(text) : unquoted(text);
    } else {
        next = findEnvelope(maxMessageSize_);
        if (next == npos && !atEnd_) {
            message.tooLarge = true;
            skipMessage();
            return message;
        }
        next = std::min(next, unread().size());
        const std::string_view text = withoutBlankLine(unread().substr(0, next));
        message.tooLarge = text.size() > maxMessageSize_;
        if (!message.tooLarge) message.bytes = unquoted(text);
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
    next = end + lineEndLength(text.substr(end));
    const bool isLineStart = next > 0 && text[next - 1] == '\n';
    return next == text.size() || (isLineStart && isEnvelope(firstLine(text.substr(next))));
}

/// The end of the message by its Content-Length, if one is there.
std::optional<std::size_t> MboxReader::endByLength(std::size_t& next) {
    // Real headers are far shorter; what is longer is scanned as any text.
    constexpr std::size_t longestHeader = std::size_t{1} << 20;
    std::size_t header = headerLength(unread());
    while (header == npos && unread().size() < longestHeader && fill()) {
        header = headerLength(unread());
    }
    if (header == npos) return std::nullopt;
    const auto length = contentLength(unread().substr(0, header));
    if (!length || *length > maxMessageSize_ || header > maxMessageSize_ - *length) {
        return std::nullopt;
    }
    const std::size_t end = header + *length;
    return endsBehind(end, next) ? std::optional(end) : std::nullopt;
}

std::size_t MboxReader::findEnvelope(std::size_t maxSize) {
    constexpr std::size_t partOfMark = std::string_view("From ").size() - 1;
    for (std::size_t at = 0;;) {
        const std::size_t found = findFrom(unread(), at);
        if (found == npos) {
            at = std::max(at, unread().size() - std::min(unread().size(), partOfMark));
            if (unread().size() > maxSize + chunkSize || !fill()) return npos;
            continue;
        }
        at = found + 1;
        if (found == 0 || unread()[found - 1] != '\n') continue;
        fillTo(found + longestEnvelope + 2);
        const std::string_view before = withoutLineEnd(unread().substr(0, found));
        const bool behindBlankLine = before.empty() || before.ends_with('\n');
        if (behindBlankLine && isEnvelope(firstLine(unread().substr(found)))) return found;
    }
}

/// Passes over a message that is larger than the buffer may grow.
void MboxReader::skipMessage() {
    // What stays is enough to see a blank line and the mark behind it.
    constexpr std::size_t overlap = 16;
    std::size_t found = npos;
    while (found == npos && !atEnd_) {
        const std::size_t size = unread().size();
        start_ += size - std::min(size, overlap);
        found = findEnvelope(chunkSize);
    }
    start_ = found == npos ? buffer_.size() : start_ + found;
}

}  // namespace bouncecheck
