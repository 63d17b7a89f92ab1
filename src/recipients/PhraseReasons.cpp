#include "recipients/PhraseReasons.h"

#include <array>

#include "phrases/Catalog.h"
#include "recipients/tables/ReplyPhrases.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

constexpr std::array<std::span<const PhraseRow>, 3> kinds = {clearPhrases, fairPhrases,
                                                             weakPhrases};

/// Where the rows of a kind are in the one numbering that a pass goes by.
constexpr phrases::RowRange rangeOf(PhraseKind kind) noexcept {
    phrases::RowRange range;
    for (std::size_t i = 0; i <= static_cast<std::size_t>(kind); ++i) {
        range.first = range.end;
        range.end += kinds[i].size();
    }
    return range;
}

constexpr auto rows = [] {
    std::array<phrases::Row, rangeOf(PhraseKind::weak).end> all{};
    std::size_t count = 0;
    for (const std::span<const PhraseRow> kind : kinds) {
        for (const PhraseRow& row : kind) all[count++].text = row.phrase;
    }
    return all;
}();

constexpr phrases::Catalog catalog = phrases::CompiledCatalog<rows>::catalog({});

constexpr bool allAreSearchable() {
    for (const phrases::Row& row : rows) {
        if (!phrases::isSearchable(row)) return false;
    }
    return true;
}
static_assert(allAreSearchable(), "a phrase is too short for the pass");

}  // namespace

std::span<const PhraseRow> phraseRows(PhraseKind kind) noexcept {
    return kinds[static_cast<std::size_t>(kind)];
}

PhraseMatches::PhraseMatches(std::string_view plain)
    : plain_(plain), found_(catalog.find(plain, {}, phrases::Engine::pass)) {}

const PhraseRow* PhraseMatches::firstOf(PhraseKind kind) const noexcept {
    const phrases::RowRange range = rangeOf(kind);
    const std::size_t row = found_.next(range.first, range.end);
    return row < range.end ? &phraseRows(kind)[row - range.first] : nullptr;
}

bool PhraseMatches::saysExpired() const noexcept {
    for (std::size_t row = found_.next(0, rows.size()); row < rows.size();
         row = found_.next(row + 1, rows.size())) {
        std::size_t index = row;
        for (const std::span<const PhraseRow> kind : kinds) {
            if (index < kind.size()) {
                if (kind[index].reason == Reason::expired) return true;
                break;
            }
            index -= kind.size();
        }
    }
    return false;
}

TextPart PhraseMatches::placeOf(const PhraseRow& row) const {
    return {findBytesNoCase(plain_, row.phrase), row.phrase.size()};
}

}  // namespace bouncecheck
