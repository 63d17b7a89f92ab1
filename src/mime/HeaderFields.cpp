#include "mime/HeaderFields.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "mime/Charset.h"
#include "mime/EncodedWords.h"
#include "mime/LineEnds.h"
#include "mime/NextCrLf.h"
#include "text/Ascii.h"
#include "text/ByteBlock.h"
#include "text/ByteSet.h"
#include "text/Search.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

/// The length of the line that `text` begins with, its end included.
std::size_t lineLength(std::string_view text) noexcept {
    const std::size_t end = findCrLf(text);
    return end == npos ? text.size() : end + crLf.size();
}

/// Where the fields of a text end, for positions that only grow.
class FieldEnds {
public:
    explicit FieldEnds(std::string_view text) noexcept : text_(text), lineEnds_(text) {}

    /// Where the field that begins at `start` ends, with the folded lines that go on with it.
    std::size_t after(std::size_t start) noexcept {
        std::size_t end = start;
        do {
            end = lineEnds_.atOrAfter(end);
            if (end == npos) return text_.size();
            end += crLf.size();
        } while (end < text_.size() && ascii::isBlank(text_[end]));
        return end;
    }

private:
    std::string_view text_;
    NextCrLf lineEnds_;
};

/// Those of field names (RFC 5322, section 2.2).
constexpr ByteSet nameBytes = [] {
    ByteSet set("");
    for (char c = '!'; c <= '~'; ++c) {
        if (c != ':') set.add(c);
    }
    return set;
}();

/// Where the name of the field that `line` begins with ends, and the colon behind it, which blanks
/// may precede; both 0 when there is no field.
struct FieldName {
    std::size_t length = 0;
    std::size_t colon = 0;
};

/// How many bytes of a name `line` begins with: those of most names are seen at once.
std::size_t nameLength(std::string_view line) noexcept {
    std::size_t length = 0;
    if constexpr (ByteBlock::isFast) {
        for (; length + ByteBlock::size <= line.size(); length += ByteBlock::size) {
            const ByteBlock block(line.data() + length);
            const unsigned others =
                block.lessThan('!') | block.equalTo(':') | block.equalTo('\x7F');
            if (others != 0) return length + static_cast<std::size_t>(std::countr_zero(others));
        }
    }
    return length + lengthOf(nameBytes, line.substr(length));
}

FieldName fieldNameOf(std::string_view line) noexcept {
    const std::size_t length = nameLength(line);
    std::size_t colon = length;
    while (colon < line.size() && ascii::isBlank(line[colon])) ++colon;
    const bool isField = length > 0 && colon < line.size() && line[colon] == ':';
    return isField ? FieldName{length, colon} : FieldName{};
}

bool isMailboxLine(std::string_view line) noexcept {
    return line.starts_with("From ") || line.starts_with(">From ");
}

/// Whether `field` is a folded line, which goes on with a field if there is one.
bool isContinuation(std::string_view field) noexcept {
    return ascii::isBlank(field.front()) && !ascii::trim(field).empty();
}

/// `text` without the white space at both ends.
std::string trimmed(std::string text) {
    text.resize(ascii::trimRight(text).size());
    text.erase(0, text.size() - ascii::trimLeft(text).size());
    return text;
}

/// The length of the blank lines and byte order marks that `text` begins with.
std::size_t leadingLength(std::string_view text) noexcept {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    std::size_t length = 0;
    for (std::size_t i = 0; i < text.size();) {
        if (i == length && text.substr(i).starts_with(byteOrderMark)) {
            length = i += byteOrderMark.size();
        } else if (!ascii::isSpace(text[i])) {
            break;
        } else if (text[i++] == '\n') {
            length = i;
        }
    }
    return length;
}

}  // namespace

std::string HeaderField::unfolded() const {
    std::string out;
    unfoldInto(out);
    return out;
}

void HeaderField::unfoldInto(std::string& out) const {
    out.clear();
    std::string_view rest = ascii::trim(wholeCharacters(rawValue, limits::fieldValue));
    out.reserve(rest.size());
    for (std::size_t end; (end = findCrLf(rest)) != npos;) {
        out += rest.substr(0, end);
        out += ' ';
        rest.remove_prefix(end + crLf.size());
        while (!rest.empty() && ascii::isBlank(rest.front())) rest.remove_prefix(1);
    }
    out += rest;
    if (!isUtf8(out)) out = undeclaredToUtf8(std::move(out));
}

std::string_view HeaderField::unfoldedIn(std::string& room) const {
    const std::string_view value = ascii::trim(rawValue);
    if (!isCut() && isAsciiLine(value)) return value;
    unfoldInto(room);
    return room;
}

std::string HeaderField::decoded() const {
    std::string room;
    const std::string_view value = decodedIn(room);
    return value.data() == room.data() ? std::move(room) : std::string(value);
}

std::string_view HeaderField::decodedIn(std::string& room) const {
    const std::string_view value = unfoldedIn(room);
    if (!contains(value, "=?")) return value;
    return room = trimmed(decodeEncodedWords(value));
}

std::size_t HeaderFields::startIn(std::string_view text) {
    const std::size_t start = leadingLength(text);
    const std::string_view line = text.substr(start);
    if (!line.starts_with("From ") || fieldNameOf(line).length > 0) return start;
    // "From " may begin a sentence too; it is an envelope when a header follows.
    const std::size_t next = start + lineLength(line);
    const std::size_t header = next + leadingLength(text.substr(next));
    return ofMessage(text.substr(header)).all().empty() ? start : header;
}

HeaderFields HeaderFields::ofMessage(std::string_view text, std::size_t limit, std::size_t usual) {
    HeaderFields block = read(text, Stop::atOtherLine, limit, usual);
    // Without a field, a "From " line is a sentence of the body.
    if (block.fields_.empty() && limit > 0) block.size_ = text.starts_with(crLf) ? crLf.size() : 0;
    return block;
}

HeaderFields HeaderFields::ofReport(std::string_view text, std::size_t limit) {
    return read(text, Stop::atEnd, limit, usualFields);
}

HeaderFields HeaderFields::ofGroup(std::string_view text) {
    constexpr std::size_t usual = 12;  // of a recipient, and of systems that say more
    return read(text, Stop::atBlankLine, limits::headerFields, usual);
}

HeaderFields HeaderFields::read(std::string_view text, Stop stop, std::size_t limit,
                                std::size_t usual) {
    HeaderFields block;
    FieldEnds ends(text);
    std::size_t at = 0;
    while (at < text.size()) {
        if (text.substr(at).starts_with(crLf)) {
            at += crLf.size();
            if (stop != Stop::atEnd) break;
            continue;
        }
        const std::size_t end = ends.after(at);
        const std::string_view field = text.substr(at, end - at);
        // A line that begins with "--" is a boundary in the wrong place.
        const FieldName name = field.starts_with("--") ? FieldName{} : fieldNameOf(field);
        if (name.length > 0) {
            if (block.fields_.empty()) block.fields_.reserve(usual);
            if (block.fields_.size() < limit) {
                block.fields_.push_back(
                    {field.substr(0, name.length), field.substr(name.colon + 1)});
            }
        } else if (stop == Stop::atOtherLine && !isMailboxLine(field) && !isContinuation(field)) {
            break;
        }
        at = end;
    }
    block.size_ = at;
    return block;
}

const HeaderField* HeaderFields::find(std::string_view name) const noexcept {
    const std::span<const HeaderField> fields = all();
    const auto found = std::ranges::find_if(
        fields, [&](const HeaderField& field) { return ascii::equalsNoCase(field.name, name); });
    return found == fields.end() ? nullptr : &*found;
}

}  // namespace bouncecheck
