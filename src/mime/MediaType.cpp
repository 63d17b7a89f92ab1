#include "mime/MediaType.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <optional>
#include <span>
#include <tuple>
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

/// Reads the pieces of a structured value from left to right.
class ValueReader {
public:
    explicit ValueReader(std::string_view text) noexcept : rest_(text) {}

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
        const std::string_view found =
            rest_.substr(0, static_cast<std::size_t>(end - rest_.begin()));
        rest_.remove_prefix(found.size());
        return found;
    }

    /// A quoted or a bare value; a quote that is never closed ends at a ';'.
    std::string value() {
        if (!rest_.starts_with('"')) return std::string(word(";"));
        std::string out;
        std::size_t i = 1;
        for (; i < rest_.size() && rest_[i] != '"'; ++i) {
            if (rest_[i] == '\\' && i + 1 < rest_.size()) ++i;
            out += rest_[i];
        }
        if (i < rest_.size()) {
            rest_.remove_prefix(i + 1);
            return out;
        }
        rest_.remove_prefix(1);
        const std::string_view open = rest_.substr(0, rest_.find(';'));
        rest_.remove_prefix(open.size());
        return std::string(ascii::trim(open));
    }

private:
    std::string_view rest_;
};

/// One `name=value` as written: a plain parameter (`name`), an extended one
/// (`name*`) or a piece of one in several (`name*0`, `name*0*`).
struct Piece {
    std::string name;
    std::optional<unsigned> index;
    bool extended = false;
    std::string value;
    /// Its place among the others as written.
    std::size_t place;

    Piece(std::string_view writtenName, std::string writtenValue, std::size_t writtenPlace)
        : value(std::move(writtenValue)), place(writtenPlace) {
        const std::size_t star = writtenName.find('*');
        name = ascii::lowerCase(writtenName.substr(0, star));
        if (star == npos) return;
        std::string_view section = writtenName.substr(star + 1);
        extended = section.empty() || section.ends_with('*');
        if (section.ends_with('*')) section.remove_suffix(1);
        unsigned number = 0;
        const auto [end, error] =
            std::from_chars(section.data(), section.data() + section.size(), number);
        if (error == std::errc() && end == section.data() + section.size()) index = number;
    }
};

/// Joins the pieces of one parameter, which stand in order, up to the first gap.
std::string joined(std::span<const Piece> pieces) {
    std::string bytes;
    std::string charset;
    unsigned expected = 0;
    for (const Piece& piece : pieces) {
        if (piece.index.value_or(0) != expected) {
            if (piece.index.value_or(0) < expected) continue;  // given twice
            break;
        }
        std::string_view value = piece.value;
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

/// RFC 2045, section 5.1.
bool isToken(std::string_view text) noexcept {
    const auto isTokenChar = [](char c) {
        return c > ' ' && c < '\x7F' && !ascii::isOneOf(c, "()<>@,;:\\\"/[]?=");
    };
    return !text.empty() && std::ranges::all_of(text, isTokenChar);
}

}  // namespace

ParameterizedValue::ParameterizedValue(std::string_view value) {
    ValueReader reader(value);
    reader.skip("");
    head_ = ascii::lowerCase(reader.word(";("));

    std::vector<Piece> pieces;
    if (!reader.atEnd()) pieces.reserve(4);
    while (pieces.size() < limits::parameters) {
        reader.skip(";");
        if (reader.atEnd()) break;
        const std::string_view name = reader.word("=;");
        reader.skip("");
        if (!reader.take('=')) continue;
        reader.skip("");
        std::string written = reader.value();
        if (!name.empty()) pieces.emplace_back(name, std::move(written), pieces.size());
    }

    // Extended and divided forms first, so that they win over a plain one.
    const auto order = [](const Piece& p) {
        const int rank = p.extended || p.index ? 0 : 1;
        return std::tuple(std::string_view(p.name), rank, p.index.value_or(0), p.place);
    };
    if (pieces.size() > 1) std::ranges::sort(pieces, std::less<>(), order);
    parameters_.reserve(pieces.size());
    for (auto group = pieces.begin(); group != pieces.end();) {
        const auto end = std::find_if(
            group, pieces.end(), [&](const Piece& piece) { return piece.name != group->name; });
        const bool isPlain = end - group == 1 && !group->extended && !group->index;
        std::string whole = isPlain ? std::move(group->value) : joined({group, end});
        parameters_.push_back({std::move(group->name), std::move(whole)});
        group = end;
    }
}

std::string_view ParameterizedValue::parameter(std::string_view name) const noexcept {
    const auto found = std::ranges::find(parameters_, name, &Parameter::name);
    return found == parameters_.end() ? std::string_view() : found->value;
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
    const std::size_t slash = head.find('/');
    const bool isWellFormed =
        slash != npos && isToken(head.substr(0, slash)) && isToken(head.substr(slash + 1));
    name_ = isWellFormed ? head : "text/plain";
}

bool MediaType::isOf(std::string_view type) const noexcept {
    return name_.size() > type.size() && name_.starts_with(type) && name_[type.size()] == '/';
}

}  // namespace bouncecheck
