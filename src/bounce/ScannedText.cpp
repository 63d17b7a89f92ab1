#include "bounce/ScannedText.h"

#include <span>

namespace bouncecheck {

using book::layout;
using phrases::RowRange;

const phrases::RowSet& ScannedText::scan() const {
    const std::span<std::size_t> places = places_ ? *places_ : std::span<std::size_t>();
    return found_.emplace(phraseBook().find(text_, places, engine_));
}

bool ScannedText::holds(std::size_t row) const { return phraseBook().holds(found(), row, text_); }

Match ScannedText::firstOf(ListId list) const {
    const RowRange rows = book::rowsOf(list);
    for (std::size_t row = found().next(rows.first, rows.end); row < rows.end;
         row = found().next(row + 1, rows.end)) {
        if (!holds(row)) continue;
        // A search that runs on ends in the next list.
        std::size_t index = list.index();
        while (row - layout.lists[index].first >= phraseLists[index].rows.size()) ++index;
        const std::size_t inList = row - layout.lists[index].first;
        const PhraseList& found = phraseLists[index];
        return {found.name, inList, found.rows[inList], kind_, found.letters};
    }
    return {};
}

Match ScannedText::firstOf(SingleId singles) const {
    for (std::size_t row = singles.rows().first; row < singles.rows().end; ++row) {
        if (const Match match = single(row)) return match;
    }
    return {};
}

Match ScannedText::single(std::size_t row) const {
    if (!holds(layout.singles.first + row)) return {};
    const std::size_t also = layout.alsoOfSingle[row];
    if (also != book::noRow && !holds(also)) return {};
    return {"SinglePhrases", row, singlePhrases[row].phrase, kind_, singlePhrases[row].letters};
}

std::size_t ScannedText::nextPattern(ListId patterns, std::size_t from) const {
    const RowRange rows = book::rowsOf(patterns);
    const std::size_t row = found().next(rows.first + from, rows.end);
    return row < rows.end ? row - rows.first : npos;
}

bool ScannedText::mayHaveRulePhrase(std::size_t rule) const {
    return found().has(layout.rules.first + rule);
}

std::size_t ScannedText::nextMarker(std::size_t from) const {
    const RowRange rows = book::rowsOf(BounceDataMarkers);
    for (std::size_t row = found().next(rows.first + from, rows.end); row < rows.end;
         row = found().next(row + 1, rows.end)) {
        const std::size_t marker = row - rows.first;
        const std::size_t context = layout.contextOfMarker[marker];
        if ((context == book::noRow || holds(context)) && holds(row)) return marker;
    }
    return npos;
}

std::size_t ScannedText::markerPlace(std::size_t marker) const {
    const std::size_t row = book::rowsOf(BounceDataMarkers).first + marker;
    const bool isPlaced = places_ && !phraseBook().unsearchable.has(row);
    return isPlaced ? (*places_)[marker] : findBytes(text_, phraseBook().texts[row]);
}

}  // namespace bouncecheck
