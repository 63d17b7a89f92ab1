#include "tool/sources/Envelope.h"

#include <algorithm>
#include <array>

#include "mime/CalendarNames.h"
#include "text/Ascii.h"

namespace bouncecheck {
namespace {

enum class Piece { none, month, time, year, isoDate, other };

/// Whether `word` is one of the names, cut to three letters.
template <std::size_t Size>
bool isOneOf(std::string_view word, const std::array<std::string_view, Size>& names) noexcept {
    return word.size() == 3 && indexOfName(word, names) >= 0;
}

/// Whether `word` has the form of `pattern`, in which '9' stands for a digit.
constexpr bool hasForm(std::string_view word, std::string_view pattern) noexcept {
    return std::ranges::equal(word, pattern,
                              [](char c, char p) { return p == '9' ? ascii::isDigit(c) : c == p; });
}

bool isZone(std::string_view word) noexcept {
    if (word.starts_with('(') && word.ends_with(')')) {
        word = word.substr(1, word.size() - 2);
    }
    const bool isName = !word.empty() && word.size() <= 5 &&
                        std::ranges::all_of(word, [](char c) { return c >= 'A' && c <= 'Z'; });
    return isName || hasForm(word, "+9999") || hasForm(word, "-9999");
}

/// What part of a date `word` is.
Piece pieceOf(std::string_view word) noexcept {
    if (word.ends_with(',')) word.remove_suffix(1);
    if (isOneOf(word, monthNames)) return Piece::month;
    if (hasForm(word, "99:99:99") || hasForm(word, "99:99") || hasForm(word, "9:99:99") ||
        hasForm(word, "9:99")) {
        return Piece::time;
    }
    if (hasForm(word, "9999")) return Piece::year;
    if (hasForm(word, "9999-99-99")) return Piece::isoDate;
    const bool isDay = hasForm(word, "99") || hasForm(word, "9");
    return isDay || isOneOf(word, weekdayNames) || isZone(word) ? Piece::other : Piece::none;
}

}  // namespace

bool isEnvelope(std::string_view line) noexcept {
    constexpr std::string_view from = "From ";
    if (!line.starts_with(from) || line.size() > longestEnvelope) return false;
    line = ascii::trimRight(line.substr(from.size()));

    // The date is what the line ends in.
    bool hasMonth = false;
    bool hasTime = false;
    bool hasYear = false;
    while (!line.empty()) {
        const std::size_t start = line.find_last_of(" \t") + 1;
        const Piece piece = pieceOf(line.substr(start));
        if (piece == Piece::none) break;
        hasTime |= piece == Piece::time;
        hasMonth |= piece == Piece::month || piece == Piece::isoDate;
        hasYear |= piece == Piece::year || piece == Piece::isoDate;
        line = ascii::trimRight(line.substr(0, start));
    }
    return hasMonth && hasTime && hasYear;
}

}  // namespace bouncecheck
