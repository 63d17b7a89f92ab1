#include "StoredMessages.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "tool/sources/Envelope.h"
#include "tool/sources/FileContent.h"

namespace bouncecheck::python {
namespace {

using Kind = ArrowColumn::Kind;

ArrowColumn noRows() {
    return {Kind::record,
            "",
            false,
            {{Kind::int64, "offset", false},
             {Kind::bytes, "message", true},
             {Kind::text, "problem", true}}};
}

void append(ArrowColumn& rows, std::uint64_t offset, std::string_view message) {
    RecordRow row(rows);
    row.next().appendNumber(static_cast<std::int64_t>(offset));
    row.next().appendBytes(message);
    row.next().appendNull();
    row.end();
}

void appendProblem(ArrowColumn& rows, std::uint64_t offset, std::string_view problem) {
    RecordRow row(rows);
    row.next().appendNumber(static_cast<std::int64_t>(offset));
    row.next().appendNull();
    row.text(problem);
    row.end();
}

}  // namespace

std::uint64_t StoredMessages::startOfStream(const Stretch& stretch) noexcept {
    constexpr std::uint64_t blankLine = std::string_view("\n\r\n").size();
    return stretch.begin - std::min(stretch.begin, blankLine);
}

/// Adds a row for the next message, or for why there is none; false at the end.
bool StoredMessages::addNext(ArrowColumn& rows) {
    try {
        const auto message = reader_.next();
        if (!message) return false;
        const std::uint64_t offset = streamStart_ + message->offset;
        if (offset >= stretch_.end) return false;
        // What began before the stretch is for others to read.
        const bool isRest = stretch_.begin > 0 && !message->hasEnvelope;
        if (isRest || offset < stretch_.begin) return true;
        if (message->tooLarge) {
            appendProblem(rows, offset, "the message is larger than the limit");
        } else {
            append(rows, offset, message->bytes);
        }
        return true;
    } catch (const ReadError& error) {
        appendProblem(rows, stretch_.begin, error.what());
        return false;
    }
}

std::optional<ArrowColumn> StoredMessages::next(std::size_t mostRows, std::size_t mostBytes) {
    ArrowColumn rows = noRows();
    while (!atEnd_ && static_cast<std::size_t>(rows.size()) < mostRows &&
           rows.textBytes() < mostBytes) {
        atEnd_ = !addNext(rows);
    }
    if (rows.size() == 0) return std::nullopt;
    return rows;
}

bool canBeDivided(std::string_view path, std::string_view first) noexcept {
    const FileKind kind = kindOfMember(path);
    const FileContent::Kind content = contentOf(first.substr(0, decisiveBytes)).kind;
    if (kind == FileKind::message || content != FileContent::Kind::mail) return false;
    const std::string_view line = first.substr(0, longestEnvelope + 1);
    const std::size_t end = line.find_first_of("\r\n");
    if (end == std::string_view::npos) return kind == FileKind::mailbox;
    if (line[end] == '\r' && line.substr(end + 1, 1) != "\n") return false;
    return kind == FileKind::mailbox || isEnvelope(line.substr(0, end));
}

}  // namespace bouncecheck::python
