#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <string_view>

#include "bounce/tables/BounceDataMarkers.h"
#include "bounce/tables/Literals.h"
#include "text/Search.h"

namespace bouncecheck {

/// A phrase of tables/Literals.h. Any other does not compile.
template <const auto& Table>
class Literal {
public:
    consteval Literal(const char* text) : row_(rowOf(text)) {}
    constexpr std::size_t row() const noexcept { return row_; }

private:
    static consteval std::size_t rowOf(std::string_view text) {
        std::size_t row = 0;
        while (Table[row] != text) ++row;  // ends in a compile error past the table
        return row;
    }
    std::size_t row_;
};

using ExactLiteral = Literal<exactLiterals>;
using NoCaseLiteral = Literal<noCaseLiterals>;

/// Which of the program's phrases stand in one text, found in one pass over it;
/// every question after that is a look-up.
///
/// Refers to the text, which must not change meanwhile. Phrases too short for the
/// pass are searched when they are asked for.
class PhraseScan {
public:
    PhraseScan() : PhraseScan(std::string_view()) {}
    explicit PhraseScan(std::string_view text) { read(text); }
    PhraseScan(const PhraseScan&) = delete;
    PhraseScan& operator=(const PhraseScan&) = delete;

    /// Passes over another text.
    void read(std::string_view text);

    std::string_view text() const noexcept { return text_; }

    bool has(ExactLiteral phrase) const noexcept { return isSet(phrase.row()); }
    bool hasNoCase(NoCaseLiteral phrase) const noexcept {
        return isSet(std::size(exactLiterals) + phrase.row());
    }

    /// The first phrase in the order of `list` that the text holds, or null. The
    /// list ends at an empty phrase or null, or after `maxEntries`. A list that
    /// is no table of the program is searched phrase by phrase.
    const char* firstOf(const char* const* list, LetterCase letters,
                        std::size_t maxEntries = npos) const;

    /// The index of the first pattern of `list`, a table of the program, at or
    /// after `from` whose longest literal piece stands in the text; npos when
    /// there is none. Whether the pattern matches is another question.
    std::size_t nextPattern(const char* const* list, std::size_t from) const noexcept;

    /// Whether the phrase of the row `rule` of BounceRules may stand in the text.
    bool mayHaveRulePhrase(std::size_t rule) const noexcept;

    /// The index of the first marker at or after `from` that stands in the text
    /// and whose context does; npos when there is none.
    std::size_t nextMarker(std::size_t from) const noexcept;
    /// The first place of that marker.
    std::size_t markerPlace(std::size_t marker) const noexcept;

    static constexpr std::size_t maxRows = 1280;

private:
    friend struct RowCollector;

    struct RowRange {
        std::size_t first = 0;
        std::size_t end = 0;
    };
    static RowRange rowsOf(const char* const* list, LetterCase letters) noexcept;

    bool isSet(std::size_t row) const noexcept { return found_[row / 64] >> (row % 64) & 1; }
    std::size_t nextSet(std::size_t from, std::size_t end) const noexcept;
    /// What the pass could not tell of a row that is set.
    bool holds(std::size_t row) const noexcept;

    std::string_view text_;
    /// A bit for each row: found, or too short to be told.
    std::array<std::uint64_t, maxRows / 64> found_;
    /// Where a marker that was found stands first.
    std::array<std::size_t, std::size(BounceDataMarkers) - 1> places_;
};

}  // namespace bouncecheck
