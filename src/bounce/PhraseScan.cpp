#include "bounce/PhraseScan.h"

#include <bit>

#include "bounce/PhraseRows.h"

namespace bouncecheck {
namespace {

using rows::book;

constexpr rows::Grouping grouping;
constexpr phrases::Tables<grouping.count> tables(grouping.phrases<grouping.count>());
constexpr phrases::Matcher matcher(tables);

using RowSet = std::array<std::uint64_t, PhraseScan::maxRows / 64>;

/// The rows that a pass does not tell.
constexpr RowSet untold = [] {
    RowSet set{};
    for (std::size_t row = 0; row < book.count; ++row) {
        if (!rows::isSearchable(book.rows[row])) set[row / 64] |= std::uint64_t{1} << (row % 64);
    }
    return set;
}();

constexpr bool literalsAreSearchable = [] {
    for (std::size_t row = book.literals.first; row < book.literals.end; ++row) {
        if (!rows::isSearchable(book.rows[row])) return false;
    }
    return true;
}();
static_assert(literalsAreSearchable);

}  // namespace

/// Takes down what a pass finds.
struct RowCollector {
    PhraseScan& scan;

    static bool isMarker(std::size_t row) noexcept {
        return row >= book.markers.first && row < book.markers.end;
    }

    /// Whether a phrase at that place would tell anything new.
    bool wants(std::size_t phrase, std::size_t at) const noexcept {
        for (std::size_t i = grouping.starts[phrase]; i < grouping.starts[phrase + 1]; ++i) {
            const std::size_t row = grouping.members[i];
            if (!scan.isSet(row)) return true;
            if (isMarker(row) && at < scan.places_[row - book.markers.first]) return true;
        }
        return false;
    }

    void found(std::size_t phrase, std::size_t at) noexcept {
        for (std::size_t i = grouping.starts[phrase]; i < grouping.starts[phrase + 1]; ++i) {
            const std::size_t row = grouping.members[i];
            const rows::Row& sought = book.rows[row];
            if (sought.letters == LetterCase::exact &&
                scan.text_.substr(at, sought.text.size()) != sought.text) {
                continue;
            }
            if (isMarker(row)) {
                std::size_t& place = scan.places_[row - book.markers.first];
                place = scan.isSet(row) ? std::min(place, at) : at;
            }
            scan.found_[row / 64] |= std::uint64_t{1} << (row % 64);
        }
    }
};

void PhraseScan::read(std::string_view text) {
    text_ = text;
    found_ = untold;
    RowCollector collector{*this};
    matcher.scan(text, collector);
}

PhraseScan::RowRange PhraseScan::rowsOf(const char* const* list, LetterCase letters) noexcept {
    for (std::size_t i = 0; i < book.listCount; ++i) {
        const rows::List& known = book.lists[i];
        if (known.table == list && known.letters == letters) {
            return {known.rows.first, known.rows.end};
        }
    }
    return {};
}

std::size_t PhraseScan::nextSet(std::size_t from, std::size_t end) const noexcept {
    while (from < end) {
        const std::uint64_t left = found_[from / 64] >> (from % 64);
        if (left != 0) {
            return std::min(from + static_cast<std::size_t>(std::countr_zero(left)), end);
        }
        from = (from / 64 + 1) * 64;
    }
    return end;
}

bool PhraseScan::holds(std::size_t row) const noexcept {
    const rows::Row& sought = book.rows[row];
    if (rows::isSearchable(sought)) return isSet(row);
    return findBytes(text_, sought.text, 0, sought.letters) != npos;
}

const char* PhraseScan::firstOf(const char* const* list, LetterCase letters,
                                std::size_t maxEntries) const {
    const RowRange known = rowsOf(list, letters);
    if (known.first == known.end || known.end - known.first > maxEntries) {
        for (std::size_t i = 0; i < maxEntries && list[i] && *list[i]; ++i) {
            if (findBytes(text_, list[i], 0, letters) != npos) return list[i];
        }
        return nullptr;
    }
    for (std::size_t row = nextSet(known.first, known.end); row < known.end;
         row = nextSet(row + 1, known.end)) {
        if (holds(row)) return list[row - known.first];
    }
    return nullptr;
}

std::size_t PhraseScan::nextPattern(const char* const* list, std::size_t from) const noexcept {
    const RowRange known = rowsOf(list, LetterCase::ignored);
    const std::size_t row = nextSet(known.first + from, known.end);
    return row < known.end ? row - known.first : npos;
}

bool PhraseScan::mayHaveRulePhrase(std::size_t rule) const noexcept {
    return isSet(book.rules.first + rule);
}

std::size_t PhraseScan::nextMarker(std::size_t from) const noexcept {
    const std::size_t markers = book.markers.first;
    for (std::size_t row = nextSet(markers + from, book.markers.end); row < book.markers.end;
         row = nextSet(row + 1, book.markers.end)) {
        const std::size_t context = book.contexts.first + (row - markers);
        const bool applies = book.rows[context].text.empty() || (isSet(context) && holds(context));
        if (applies && holds(row)) return row - markers;
    }
    return npos;
}

std::size_t PhraseScan::markerPlace(std::size_t marker) const noexcept {
    const rows::Row& row = book.rows[book.markers.first + marker];
    return rows::isSearchable(row) ? places_[marker] : findBytes(text_, row.text);
}

}  // namespace bouncecheck
