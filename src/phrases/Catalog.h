#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "phrases/Matcher.h"
#include "phrases/PackedTexts.h"
#include "phrases/Row.h"
#include "phrases/RowGroups.h"
#include "phrases/RowSet.h"

namespace bouncecheck::phrases {

/// How the rows of a catalog are searched. Both find the same.
enum class Engine {
    /// All of them in one pass over the text.
    pass,
    /// Each by a search of its own: what tests hold the pass against.
    plain,
};

/// Rows of a catalog, from one to the one before another.
struct RowRange {
    std::size_t first = 0;
    std::size_t end = 0;

    constexpr std::size_t size() const noexcept { return end - first; }
    constexpr bool has(std::size_t row) const noexcept { return row >= first && row < end; }
};

/// Rows and what a pass needs to find them. Refers to tables, which outlive it.
struct Catalog {
    Texts texts;
    std::span<const RowKind> kinds;
    /// Those that a pass cannot find: their phrases are too short.
    const RowSet& unsearchable;
    /// The rows of each phrase; see RowGroups.
    std::span<const std::uint16_t> starts;
    std::span<const std::uint16_t> members;
    Matcher matcher;
    /// The rows whose first place is wanted too.
    RowRange placed;

    /// The rows that stand in `text`, along with all that are unsearchable. The first
    /// place of each row of `placed` that stands there goes to `places`, which has room
    /// for all of them or for none.
    RowSet find(std::string_view text, std::span<std::size_t> places, Engine engine) const;

    /// Whether a row of what `find` returned for `text` stands in it.
    bool holds(const RowSet& found, std::size_t row, std::string_view text) const {
        return found.has(row) && (!unsearchable.has(row) || standsIn(text, row));
    }

    /// Whether a row does, by a search of its own.
    bool standsIn(std::string_view text, std::size_t row) const;
};

/// The tables of a catalog for `Rows`, a constant array, made by the compiler. No two arrays may
/// have the same name, not even in unnamed namespaces: some versions of GCC (14, for one) make
/// these members global, so that the linker takes those of one array for both.
template <const auto& Rows>
class CompiledCatalog {
public:
    static constexpr Catalog catalog(RowRange placed) {
        const Matcher matcher({texts.bytes.data(), phrases}, tables);
        return {texts.all(), kinds, unsearchable, starts, members, matcher, placed};
    }

private:
    static_assert(Rows.size() <= maxRows, "raise maxRows");

    static constexpr RowGroups groups{Rows};
    static constexpr std::size_t count = groups.count;

    template <class Value, std::size_t Count>
    static constexpr std::array<Value, Count> firstOf(const auto& values) {
        std::array<Value, Count> out{};
        std::copy_n(values.begin(), Count, out.begin());
        return out;
    }

    static constexpr PackedTexts<Rows.size(), packedSize(Rows, &Row::text)> texts{Rows, &Row::text};
    static constexpr auto kinds = [] {
        std::array<RowKind, Rows.size()> all{};
        std::ranges::transform(Rows, all.begin(), &Row::kind);
        return all;
    }();
    static constexpr auto starts = firstOf<std::uint16_t, count + 1>(groups.starts);
    static constexpr auto members = firstOf<std::uint16_t, groups.memberCount()>(groups.members);
    /// Where each phrase stands: as in the first of its rows.
    static constexpr auto phrases = [] {
        std::array<TextPlace, count> places{};
        for (std::size_t i = 0; i < count; ++i) places[i] = texts.places[members[starts[i]]];
        return places;
    }();
    static constexpr Tables<count> tables{firstOf<std::string_view, count>(groups.texts)};
    static constexpr RowSet unsearchable = [] {
        RowSet set;
        for (std::size_t row = 0; row < Rows.size(); ++row) {
            if (!isSearchable(Rows[row])) set.add(row);
        }
        return set;
    }();
};

}  // namespace bouncecheck::phrases
