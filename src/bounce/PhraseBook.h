#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <utility>

#include "bounce/Marker.h"
#include "bounce/tables/BounceRules.h"
#include "bounce/tables/PhraseLists.h"
#include "bounce/tables/SinglePhrases.h"
#include "phrases/Catalog.h"

namespace bouncecheck {

namespace mistakes {
// Never defined: a call from a constant expression is the compiler's error message.
void thisListHasNoRowInPhraseLists();
void noSinglePhraseHasThisPurpose();
}  // namespace mistakes

/// A list of the registry, by its table. Any other does not compile.
class ListId {
public:
    consteval ListId(const char* const* table) {
        while (index_ < std::size(phraseLists) && !holds(phraseLists[index_], table)) ++index_;
        if (index_ == std::size(phraseLists)) mistakes::thisListHasNoRowInPhraseLists();
    }
    constexpr std::size_t index() const noexcept { return index_; }

private:
    /// By the phrases, since a compiler need not know addresses.
    static consteval bool holds(const PhraseList& list, const char* const* table) {
        for (const std::string_view phrase : list.rows) {
            // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): only compilers run it
            if (*table++ != phrase) return false;
        }
        return true;
    }

    std::size_t index_ = 0;
};

/// All lists, in the order of the registry.
inline constexpr auto allLists = []<std::size_t... Index>(std::index_sequence<Index...>) {
    return std::array{ListId(phraseLists[Index].rows.data())...};
}
(std::make_index_sequence<std::size(phraseLists)>());

/// The single phrases of a purpose. Any other purpose does not compile.
class SingleId {
public:
    consteval SingleId(const char* purpose) {
        const auto isFor = [&](const SinglePhrase& row) {
            return std::string_view(row.purpose) == purpose;
        };
        const auto begin = std::ranges::find_if(singlePhrases, isFor);
        const auto end = std::find_if_not(begin, std::end(singlePhrases), isFor);
        if (begin == end) mistakes::noSinglePhraseHasThisPurpose();
        rows_ = {static_cast<std::size_t>(begin - std::begin(singlePhrases)),
                 static_cast<std::size_t>(end - std::begin(singlePhrases))};
    }
    constexpr phrases::RowRange rows() const noexcept { return rows_; }

private:
    phrases::RowRange rows_;
};

/// Where the rows of all tables are in the one numbering that a pass goes by.
namespace book {

inline constexpr std::size_t listCount = std::size(phraseLists);
inline constexpr std::size_t singleCount = std::size(singlePhrases);
inline constexpr std::size_t markerCount = std::size(BounceDataMarkers) - 1;
/// In place of a row: none.
inline constexpr std::uint16_t noRow = 0;

/// The longest piece between the stars of a pattern.
constexpr std::string_view longestPiece(std::string_view pattern) noexcept {
    std::string_view longest;
    while (true) {
        const std::size_t star = pattern.find('*');
        const std::string_view piece = pattern.substr(0, star);
        if (piece.size() > longest.size()) longest = piece;
        if (star == npos) return longest;
        pattern.remove_prefix(star + 1);
    }
}

struct Layout {
    std::array<phrases::RowRange, listCount> lists{};
    phrases::RowRange singles;
    phrases::RowRange rules;
    /// The row of what has to stand in the text besides, or noRow.
    std::array<std::uint16_t, singleCount> alsoOfSingle{};
    std::array<std::uint16_t, markerCount> contextOfMarker{};
};

/// Takes the rows of all tables together; for the compiler only.
struct Numbering : Layout {
    std::array<phrases::Row, phrases::maxRows> rows{};
    std::size_t count = 1;  // 0 is noRow

    constexpr Numbering() {
        for (std::size_t i = 0; i < listCount; ++i) {
            lists[i].first = count;
            for (const char* entry : phraseLists[i].rows) add(rowOf(phraseLists[i], entry));
            lists[i].end = count;
        }
        for (std::size_t i = listCount - 1; i-- > 0;) {
            if (phraseLists[i].runsOn) lists[i].end = lists[i + 1].end;
        }
        singles.first = count;
        for (const SinglePhrase& single : singlePhrases) add({single.phrase, {single.letters}});
        singles.end = count;
        rules.first = count;
        for (const BounceRule& rule : BounceRules) {
            if (rule.source != RULE_END) add({rule.phrase, {.isHint = true}});
        }
        rules.end = count;
        for (std::size_t i = 0; i < singleCount; ++i) {
            alsoOfSingle[i] = addCompanion(singlePhrases[i].also, singlePhrases[i].letters);
        }
        for (std::size_t i = 0; i < markerCount; ++i) {
            contextOfMarker[i] =
                addCompanion(Marker(BounceDataMarkers[i]).context, LetterCase::exact);
        }
    }

private:
    static constexpr phrases::Row rowOf(const PhraseList& list, std::string_view entry) {
        switch (list.kind) {
            case ListKind::phrases: break;
            case ListKind::patterns: return {longestPiece(entry), {.isHint = true}};
            case ListKind::markers: return {Marker(entry).text, {list.letters}};
        }
        return {entry, {list.letters}};
    }
    constexpr void add(const phrases::Row& row) { rows[count++] = row; }
    constexpr std::uint16_t addCompanion(std::string_view text, LetterCase letters) {
        if (text.empty()) return noRow;
        add({text, {letters}});
        return static_cast<std::uint16_t>(count - 1);
    }
};

inline constexpr Numbering numbering;
inline constexpr Layout layout = numbering;

constexpr phrases::RowRange rowsOf(ListId list) noexcept { return layout.lists[list.index()]; }

}  // namespace book

/// The rows of all tables, ready to be searched.
const phrases::Catalog& phraseBook() noexcept;

}  // namespace bouncecheck
