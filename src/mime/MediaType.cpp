#include "mime/MediaType.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <functional>
#include <iterator>
#include <utility>

#include <bouncecheck/Limits.h>
#include "mime/Charset.h"
#include "mime/CharsetNames.h"
#include "mime/Comment.h"
#include "text/Ascii.h"
#include "text/HexEscapes.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// Those of most parts.
constexpr std::array<std::string_view, 10> commonTypes = {
    "text/plain",        "text/html",
    "multipart/report",  "message/delivery-status",
    "message/rfc822",    "text/rfc822-headers",
    "multipart/mixed",   "multipart/alternative",
    "multipart/related", "message/feedback-report"};

/// RFC 2045, section 5.1.
bool isToken(std::string_view text) noexcept {
    const auto isTokenChar = [](char c) {
        return c > ' ' && c < '\x7F' && !ascii::isOneOf(c, "()<>@,;:\\\"/[]?=");
    };
    return !text.empty() && std::ranges::all_of(text, isTokenChar);
}

}  // namespace

/// Reads the pieces of a structured value from left to right.
class ParameterizedValue::Reader {
public:
    explicit Reader(std::string_view text) noexcept : rest_(text) {}

    bool atEnd() const noexcept { return rest_.empty(); }

    /// Passes over white space, comments and `separators`.
    void skip(std::string_view separators) noexcept {
        while (!rest_.empty()) {
            if (rest_.front() == '(') {
                rest_.remove_prefix(std::min(commentLength(rest_), rest_.size()));
            } else if (ascii::isSpace(rest_.front()) || ascii::isOneOf(rest_.front(), separators)) {
                rest_.remove_prefix(1);
            } else {
                return;
            }
        }
    }

    bool take(char c) noexcept {
        if (rest_.empty() || rest_.front() != c) return false;
        rest_.remove_prefix(1);
        return true;
    }

    /// What stands before the next byte of `stops` or white space.
    std::string_view word(std::string_view stops) noexcept {
        const auto isEnd = [&](char c) { return ascii::isSpace(c) || ascii::isOneOf(c, stops); };
        const auto end = std::ranges::find_if(rest_, isEnd);
        return take(static_cast<std::size_t>(end - rest_.begin()));
    }

    /// A piece of that name with the value that stands here, quoted or bare; a quote that is never
    /// closed ends at a ';'.
    Piece piece(std::string_view name) {
        if (!take('"')) return {name, word(";")};
        bool hasEscapes = false;
        for (std::size_t i = 0; i < rest_.size(); ++i) {
            if (rest_[i] == '"') {
                Piece quoted(name, take(i));
                quoted.hasEscapes = hasEscapes;
                rest_.remove_prefix(1);
                return quoted;
            }
            if (rest_[i] == '\\') {
                hasEscapes = true;
                ++i;
            }
        }
        return {name, ascii::trim(take(std::min(rest_.find(';'), rest_.size())))};
    }

private:
    std::string_view take(std::size_t size) noexcept {
        const std::string_view front = rest_.substr(0, size);
        rest_.remove_prefix(size);
        return front;
    }

    std::string_view rest_;
};

ParameterizedValue::Piece::Piece(std::string_view writtenName, std::string_view writtenValue)
    : name(writtenName.substr(0, writtenName.find('*'))), written(writtenValue) {
    if (name.size() == writtenName.size()) return;
    std::string_view section = writtenName.substr(name.size() + 1);
    extended = section.empty() || section.ends_with('*');
    if (section.ends_with('*')) section.remove_suffix(1);
    unsigned number = 0;
    const auto [end, error] =
        std::from_chars(section.data(), section.data() + section.size(), number);
    if (error == std::errc() && end == section.data() + section.size()) index = number;
}

std::string ParameterizedValue::Piece::value() const {
    if (!hasEscapes) return std::string(written);
    std::string out;
    for (std::size_t i = 0; i < written.size(); ++i) {
        if (written[i] == '\\' && i + 1 < written.size()) ++i;
        out += written[i];
    }
    return out;
}

/// Joins the pieces of one parameter, which stand in order, up to the first gap.
std::string ParameterizedValue::joined(std::span<const Piece> pieces) {
    std::string bytes;
    std::string charset;
    unsigned expected = 0;
    for (const Piece& piece : pieces) {
        if (piece.index.value_or(0) != expected) {
            if (piece.index.value_or(0) < expected) continue;  // given twice
            break;
        }
        const std::string whole = piece.value();
        std::string_view value = whole;
        if (piece.extended && expected == 0) {
            // charset'language'text
            const std::size_t first = value.find('\'');
            const std::size_t second = first == npos ? npos : value.find('\'', first + 1);
            if (second != npos) {
                charset = value.substr(0, first);
                value.remove_prefix(second + 1);
            }
        }
        if (piece.extended) {
            appendHexDecoded(bytes, value, '%');
        } else {
            bytes += value;
        }
        ++expected;
    }
    return charset.empty() ? bytes : toUtf8(std::move(bytes), charset);
}

ParameterizedValue::ParameterizedValue(std::string_view value) {
    Reader reader(value);
    reader.skip("");
    head_ = reader.word(";(");
    while (pieces_.size() < limits::parameters) {
        reader.skip(";");
        if (reader.atEnd()) break;
        const std::string_view name = reader.word("=;");
        reader.skip("");
        if (!reader.take('=')) continue;
        reader.skip("");
        const Piece piece = reader.piece(name);
        if (!name.empty()) pieces_.push_back(piece);
    }
}

std::string ParameterizedValue::parameter(std::string_view name) const {
    const auto isOf = [&](const Piece& piece) { return ascii::equalsNoCase(piece.name, name); };
    const std::span<const Piece> pieces = pieces_.all();
    const auto first = std::ranges::find_if(pieces, isOf);
    if (first == pieces.end()) return {};
    const bool isSole = std::none_of(first + 1, pieces.end(), isOf);
    if (isSole && first->isPlain()) return first->value();
    std::vector<Piece> own;
    std::copy_if(first, pieces.end(), std::back_inserter(own), isOf);
    // Extended and divided forms first, so that they win over a plain one.
    std::ranges::stable_sort(own, std::less<>(), [](const Piece& piece) {
        return std::pair(piece.isPlain(), piece.index.value_or(0));
    });
    return joined(own);
}

MediaType::MediaType(std::string_view value, std::string_view defaultType) {
    if (value.empty()) {
        name_ = defaultType;
        return;
    }
    const ParameterizedValue parsed(value);
    boundary_ = parsed.parameter("boundary");
    charset_ = canonicalCharsetName(parsed.parameter("charset"));
    const std::string_view head = parsed.head();
    const auto common = std::ranges::find_if(
        commonTypes, [&](std::string_view type) { return ascii::equalsNoCase(type, head); });
    if (common != commonTypes.end()) {
        name_ = *common;
        return;
    }
    const std::size_t slash = head.find('/');
    const bool isWellFormed =
        slash != npos && isToken(head.substr(0, slash)) && isToken(head.substr(slash + 1));
    if (isWellFormed) rareName_ = ascii::lowerCase(head);
}

bool MediaType::isOf(std::string_view type) const noexcept {
    const std::string_view own = name();
    return own.size() > type.size() && own.starts_with(type) && own[type.size()] == '/';
}

}  // namespace bouncecheck
