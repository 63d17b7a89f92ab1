#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include <bouncecheck/Limits.h>
#include "mime/SmallList.h"

namespace bouncecheck {

/// One field of a header block (RFC 5322, section 2.2).
struct HeaderField {
    std::string_view name;
    /// What follows the colon, folds and encodings included.
    std::string_view rawValue;

    /// The value with each fold (a line break and the white space after it) as
    /// one blank, trimmed, 8-bit bytes made UTF-8; encoded words as they are.
    /// For structured values, which are taken apart before they are decoded.
    std::string unfolded() const;
    /// The same, referring to the message where nothing is to change, else to `room`.
    std::string_view unfoldedIn(std::string& room) const;

    /// `unfolded` with its encoded words decoded, trimmed: the value as a person
    /// reads it.
    std::string decoded() const;
    /// The same, referring to the message where nothing is to change, else to `room`.
    std::string_view decodedIn(std::string& room) const;

    /// Whether the value is longer than `limits::fieldValue`, up to where it is read.
    bool isCut() const noexcept { return rawValue.size() > limits::fieldValue; }

private:
    void unfoldInto(std::string& out) const;
};

/// The fields of a block of header lines, in order.
///
/// Refers into the text that it was read from, whose line ends are CRLF. Names
/// are matched ignoring case; blanks before the colon do not belong to them.
class HeaderFields {
public:
    /// Room for the fields of most messages; the header of a part has fewer.
    static constexpr std::size_t usualFields = 32;

    HeaderFields() = default;

    /// Where the header of the message `text` begins: after what mailboxes and
    /// editors put before it (blank lines, a "From " line, a byte order mark).
    static std::size_t startIn(std::string_view text);

    /// The header block that `text` begins with. It ends at the first blank
    /// line, which belongs to it, or at the first line that is neither a field
    /// nor one of the "From " lines of mailboxes: a body without a blank line
    /// before it. A folded line without a field before it is skipped. A text without
    /// header yields no fields, and no size unless it begins with a blank line.
    /// `limit` is how many fields are kept, `usual` how many to make room for at once.
    static HeaderFields ofMessage(std::string_view text, std::size_t limit = limits::headerFields,
                                  std::size_t usual = usualFields);

    /// The first `limit` fields of `text`, whose groups are divided by blank lines, as in
    /// the bodies of reports (RFC 3464). Other lines are passed over.
    static HeaderFields ofReport(std::string_view text, std::size_t limit = limits::headerFields);

    /// The fields of the first group of such a body, up to a blank line, which `size` includes.
    static HeaderFields ofGroup(std::string_view text);

    /// The first field of that name, or null.
    const HeaderField* find(std::string_view name) const noexcept;

    std::span<const HeaderField> all() const noexcept { return fields_.all(); }

    /// How many bytes of the text belong to the block.
    std::size_t size() const noexcept { return size_; }

private:
    enum class Stop { atBlankLine, atOtherLine, atEnd };
    static HeaderFields read(std::string_view text, Stop stop, std::size_t limit,
                             std::size_t usual);

    /// That of a part has no more fields than these, mostly.
    SmallList<HeaderField, 4> fields_;
    std::size_t size_ = 0;
};

}  // namespace bouncecheck
