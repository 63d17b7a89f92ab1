#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "mime/SmallList.h"

namespace bouncecheck {

/// A value of the form `head; name=value; ...`, as Content-Type and
/// Content-Disposition have it (RFC 2045, section 5.1; RFC 2183; RFC 2231).
///
/// Values may be quoted or not and carry comments; continuations are joined and
/// charsets converted to UTF-8. Of a parameter given twice the first counts, and
/// an extended form (`name*`) before a plain one. What makes no parameter is
/// passed over.
class ParameterizedValue {
public:
    /// `value` is unfolded, and has to live as long.
    explicit ParameterizedValue(std::string_view value);

    /// What stands before the first ';', without comments.
    std::string_view head() const noexcept { return head_; }

    /// The parameter of that name, whose letter case is ignored; "" when absent.
    std::string parameter(std::string_view name) const;

private:
    /// One `name=value` as written: a plain parameter (`name`), an extended one
    /// (`name*`) or a piece of one in several (`name*0`, `name*0*`).
    struct Piece {
        Piece() = default;
        Piece(std::string_view writtenName, std::string_view writtenValue);

        bool isPlain() const noexcept { return !extended && !index; }
        std::string value() const;

        std::string_view name;
        /// Without the quotes, but with the backslashes between them.
        std::string_view written;
        bool hasEscapes = false;
        std::optional<unsigned> index;
        bool extended = false;
    };
    class Reader;

    static std::string joined(std::span<const Piece> pieces);

    std::string_view head_;
    SmallList<Piece, 4> pieces_;
};

/// A Content-Type (RFC 2045, section 5).
class MediaType {
public:
    MediaType() = default;

    /// `value` is the unfolded field; "" reads as `defaultType`, a literal, what does not have
    /// the form type/subtype as "text/plain" (RFC 2045, section 5.2).
    MediaType(std::string_view value, std::string_view defaultType);

    /// "type/subtype" in lower case.
    std::string_view name() const noexcept { return rareName_.empty() ? name_ : rareName_; }
    bool is(std::string_view type) const noexcept { return name() == type; }
    /// Whether the type before the slash is `type`.
    bool isOf(std::string_view type) const noexcept;
    /// The parameter boundary; "" when there is none (RFC 2046, section 5.1.1).
    std::string_view boundary() const noexcept { return boundary_; }
    /// The canonical name of the parameter charset; see canonicalCharsetName.
    std::string_view charset() const noexcept { return charset_; }

private:
    // No other parameter is asked for, and there may be as many types as parts.
    /// A literal, which takes no memory of its own.
    std::string_view name_ = "text/plain";
    /// A name that is none of those; else empty.
    std::string rareName_;
    std::string boundary_;
    std::string charset_;
};

}  // namespace bouncecheck
