#include "recipients/PhraseReasons.h"

#include <algorithm>
#include <array>

#include "phrases/Catalog.h"
#include "recipients/tables/ReplyPhrases.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

constexpr std::array<std::size_t, 3> rowCounts = {std::size(clearPhrases), std::size(fairPhrases),
                                                  std::size(weakPhrases)};

/// Where the rows of a kind are in the one numbering that a pass goes by.
constexpr phrases::RowRange rangeOf(PhraseKind kind) noexcept {
    phrases::RowRange range;
    for (std::size_t i = 0; i <= static_cast<std::size_t>(kind); ++i) {
        range.first = range.end;
        range.end += rowCounts[i];
    }
    return range;
}

constexpr std::size_t rowCount = rangeOf(PhraseKind::weak).end;

/// The rows of all kinds; for the compiler only.
constexpr auto allRows = [] {
    std::array<PhraseRow, rowCount> all{};
    auto end = std::ranges::copy(clearPhrases, all.begin()).out;
    end = std::ranges::copy(fairPhrases, end).out;
    std::ranges::copy(weakPhrases, end);
    return all;
}();

constexpr auto replyRows = [] {
    std::array<phrases::Row, rowCount> all{};
    for (std::size_t i = 0; i < rowCount; ++i) all[i].text = allRows[i].phrase;
    return all;
}();

constexpr phrases::Catalog catalog = phrases::CompiledCatalog<replyRows>::catalog({});

constexpr auto stageRows = [] {
    std::array<phrases::Row, std::size(senderStages) + std::size(dataStages)> all{};
    std::size_t count = 0;
    for (const std::string_view stage : senderStages) all[count++].text = stage;
    for (const std::string_view stage : dataStages) all[count++].text = stage;
    return all;
}();

constexpr phrases::Catalog stageCatalog = phrases::CompiledCatalog<stageRows>::catalog({});

constexpr bool allAreSearchable(std::span<const phrases::Row> all) {
    for (const phrases::Row& row : all) {
        if (!phrases::isSearchable(row)) return false;
    }
    return true;
}
static_assert(allAreSearchable(replyRows) && allAreSearchable(stageRows),
              "a phrase is too short for the pass");

constexpr phrases::RowSet temporaryRows = [] {
    phrases::RowSet set;
    for (std::size_t i = 0; i < rowCount; ++i) {
        const bool isTemporary = std::ranges::any_of(temporaryWords, [&](std::string_view words) {
            return allRows[i].phrase.find(words) != npos;
        });
        if (isTemporary || allRows[i].reason == Reason::expired) set.add(i);
    }
    return set;
}();

/// What a row says, beside its phrase.
struct Meaning {
    Reason reason;
    bool lasts;
};
constexpr auto meanings = [] {
    std::array<Meaning, rowCount> all{};
    std::ranges::transform(allRows, all.begin(), [](const PhraseRow& row) {
        return Meaning{row.reason, row.lasts};
    });
    return all;
}();

PhraseRow rowAt(std::size_t number) noexcept {
    return {catalog.texts[number], meanings[number].reason, meanings[number].lasts};
}

}  // namespace

std::vector<PhraseRow> phraseRows(PhraseKind kind) {
    const phrases::RowRange range = rangeOf(kind);
    std::vector<PhraseRow> rows;
    for (std::size_t row = range.first; row < range.end; ++row) rows.push_back(rowAt(row));
    return rows;
}

PhraseMatches::PhraseMatches(std::string_view plain)
    : plain_(plain),
      found_(catalog.find(plain, {}, phrases::Engine::pass)),
      first_(found_.next(0, rowCount)) {}

std::optional<PhraseRow> PhraseMatches::firstOf(PhraseKind kind) const noexcept {
    const phrases::RowRange range = rangeOf(kind);
    const std::size_t row = found_.next(std::max(range.first, first_), range.end);
    return row < range.end ? std::optional(rowAt(row)) : std::nullopt;
}

bool PhraseMatches::saysTemporary() const noexcept {
    return first_ < rowCount && found_.meets(temporaryRows);
}

TextPart PhraseMatches::placeOf(const PhraseRow& row) const {
    return {findBytesNoCase(plain_, row.phrase), row.phrase.size()};
}

Stage stageIn(std::string_view text) {
    const phrases::RowSet found = stageCatalog.find(text, {}, phrases::Engine::pass);
    const std::size_t first = found.next(0, stageRows.size());
    if (first == stageRows.size()) return Stage::unknown;
    return first < std::size(senderStages) ? Stage::sender : Stage::data;
}

}  // namespace bouncecheck
