#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "phrases/Matcher.h"
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
    std::span<const Row> rows;
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
    bool holds(const RowSet& found, std::size_t row, std::string_view text) const;
};

/// The tables of a catalog for `Rows`, a constant array, made by the compiler. No two arrays may
/// have the same name, not even in unnamed namespaces: some versions of GCC (14, for one) make
/// these members global, so that the linker takes those of one array for both.
template <const auto& Rows>
struct CompiledCatalog {
    static constexpr RowGroups groups{Rows};
    static constexpr Tables<groups.count> tables{groups.template phrases<groups.count>()};
    static constexpr RowSet unsearchable = [] {
        RowSet set;
        for (std::size_t row = 0; row < Rows.size(); ++row) {
            if (!isSearchable(Rows[row])) set.add(row);
        }
        return set;
    }();
    static_assert(Rows.size() <= maxRows, "raise maxRows");

    static constexpr Catalog catalog(RowRange placed) {
        return {Rows, unsearchable, groups.starts, groups.members, Matcher(tables), placed};
    }
};

}  // namespace bouncecheck::phrases
