#include "recipients/PhraseReasons.h"

#include <algorithm>
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

constexpr auto replyRows = [] {
    std::array<phrases::Row, rangeOf(PhraseKind::weak).end> all{};
    std::size_t count = 0;
    for (const std::span<const PhraseRow> kind : kinds) {
        for (const PhraseRow& row : kind) all[count++].text = row.phrase;
    }
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
    std::size_t number = 0;
    for (const std::span<const PhraseRow> kind : kinds) {
        for (const PhraseRow& row : kind) {
            const bool isTemporary = std::ranges::any_of(
                temporaryWords,
                [&](std::string_view words) { return row.phrase.find(words) != npos; });
            if (isTemporary || row.reason == Reason::expired) set.add(number);
            ++number;
        }
    }
    return set;
}();

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

bool PhraseMatches::saysTemporary() const noexcept { return found_.meets(temporaryRows); }

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
