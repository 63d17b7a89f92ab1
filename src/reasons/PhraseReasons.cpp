#include "reasons/PhraseReasons.h"

#include <algorithm>
#include <array>

#include "phrases/CompiledMatcher.h"
#include "reasons/tables/ReplyPhrases.h"
#include "reasons/tables/TemporaryWords.h"

namespace bouncecheck {
namespace {

/// How many rows there are up to the end of each kind, in the one numbering that a pass goes by.
constexpr std::array<std::size_t, phraseKinds> ends = {
    std::size(clearPhrases), std::size(clearPhrases) + std::size(fairPhrases),
    std::size(clearPhrases) + std::size(fairPhrases) + std::size(hintPhrases)};
constexpr std::size_t rowCount = ends.back();

constexpr std::size_t kindOf(std::size_t row) noexcept {
    return row < ends[0] ? 0 : row < ends[1] ? 1 : 2;
}

/// The rows of all kinds; for the compiler only.
constexpr auto replyRows = [] {
    std::array<PhraseRow, rowCount> all{};
    auto end = std::ranges::copy(clearPhrases, all.begin()).out;
    end = std::ranges::copy(fairPhrases, end).out;
    std::ranges::copy(hintPhrases, end);
    return all;
}();

using ReplyPhrases = phrases::CompiledMatcher<replyRows, &PhraseRow::phrase>;

constexpr bool has(const PhraseRow& row, std::string_view words) noexcept {
    return row.phrase.find(words) != std::string_view::npos;
}

/// What a row says, beside its phrase.
struct Meaning {
    Reason reason;
    bool lasts;
    bool isTemporary;
};
constexpr auto meanings = [] {
    std::array<Meaning, rowCount> all{};
    std::ranges::transform(replyRows, all.begin(), [](const PhraseRow& row) {
        const bool isTemporary = std::ranges::any_of(
            temporaryWords, [&](std::string_view words) { return has(row, words); });
        return Meaning{row.reason, row.lasts, isTemporary || row.reason == Reason::expired};
    });
    return all;
}();

static_assert(std::ranges::all_of(temporaryWords,
                                  [](std::string_view words) {
                                      return std::ranges::any_of(replyRows, [&](const auto& row) {
                                          return has(row, words);
                                      });
                                  }),
              "words of which no phrase has any would never be found");

PhraseRow rowAt(std::size_t number) noexcept {
    return {ReplyPhrases::texts[number], meanings[number].reason, meanings[number].lasts};
}

}  // namespace

std::vector<PhraseRow> phraseRows(PhraseKind kind) {
    const auto index = static_cast<std::size_t>(kind);
    std::vector<PhraseRow> rows;
    for (std::size_t row = index == 0 ? 0 : ends[index - 1]; row < ends[index]; ++row) {
        rows.push_back(rowAt(row));
    }
    return rows;
}

/// Receives the phrases that a pass finds.
struct PhraseMatches::Collector {
    PhraseMatches& matches;

    bool wants(std::size_t row, std::size_t at) const noexcept {
        return isFirst(row, at) || (meanings[row].isTemporary && !matches.saysTemporary_);
    }
    void onFound(std::size_t row, std::size_t at) noexcept {
        matches.saysTemporary_ = matches.saysTemporary_ || meanings[row].isTemporary;
        if (!isFirst(row, at)) return;
        matches.first_[kindOf(row)] = row;
        matches.places_[kindOf(row)] = at;
    }
    /// Whether no row that counts more, and no place of this one further in front, is known.
    bool isFirst(std::size_t row, std::size_t at) const noexcept {
        const std::size_t known = matches.first_[kindOf(row)];
        return row < known || (row == known && at < matches.places_[kindOf(row)]);
    }
};

PhraseMatches::PhraseMatches(std::string_view text) : text_(text), first_(ends) {
    Collector collector{*this};
    ReplyPhrases::matcher.scan(plain(), collector);
}

std::optional<PhraseRow> PhraseMatches::firstOf(PhraseKind kind) const noexcept {
    const auto index = static_cast<std::size_t>(kind);
    return first_[index] < ends[index] ? std::optional(rowAt(first_[index])) : std::nullopt;
}

TextPart PhraseMatches::placeOfFirst(PhraseKind kind) const {
    const auto index = static_cast<std::size_t>(kind);
    return text_.inText({places_[index], ReplyPhrases::texts[first_[index]].size()});
}

}  // namespace bouncecheck
