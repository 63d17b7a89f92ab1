#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "phrases/Matcher.h"
#include "phrases/Row.h"
#include "phrases/RowSet.h"
#include "text/Ascii.h"

namespace bouncecheck::phrases {

/// Whether the pass finds the row by itself. A shorter one is searched when it is
/// asked for.
constexpr bool isSearchable(const Row& row) noexcept { return row.text.size() >= shortest; }

/// The phrases of rows, each once, and the rows of each; for the compiler only.
struct RowGroups {
    std::array<std::string_view, maxRows> texts{};
    std::size_t count = 0;
    /// Where the rows of a phrase begin in `members`.
    std::array<std::uint16_t, maxRows + 1> starts{};
    std::array<std::uint16_t, maxRows> members{};

    explicit constexpr RowGroups(std::span<const Row> rows) {
        constexpr std::size_t chains = 1024;
        std::array<std::uint16_t, maxRows> groupOf{};
        std::array<std::uint16_t, chains> head{};   // 1 more than the group, 0 for none
        std::array<std::uint16_t, maxRows> next{};  // likewise
        for (std::size_t row = 0; row < rows.size(); ++row) {
            if (!isSearchable(rows[row])) continue;
            const std::string_view text = rows[row].text;
            std::uint32_t hash = 0;
            for (const char c : text) hash = hash * 31 + folded(c);
            std::size_t group = head[hash % chains];
            while (group != 0 && !ascii::equalsNoCase(texts[group - 1], text)) {
                group = next[group - 1];
            }
            if (group == 0) {
                texts[count] = text;
                next[count] = head[hash % chains];
                head[hash % chains] = static_cast<std::uint16_t>(++count);
                group = count;
            }
            groupOf[row] = static_cast<std::uint16_t>(group - 1);
            ++starts[group];
        }
        for (std::size_t i = 1; i < starts.size(); ++i) {
            starts[i] = static_cast<std::uint16_t>(starts[i] + starts[i - 1]);
        }
        std::array<std::uint16_t, maxRows + 1> ends = starts;
        for (std::size_t row = 0; row < rows.size(); ++row) {
            if (!isSearchable(rows[row])) continue;
            members[ends[groupOf[row]]++] = static_cast<std::uint16_t>(row);
        }
    }

    constexpr std::size_t memberCount() const noexcept { return starts[count]; }
};

}  // namespace bouncecheck::phrases
