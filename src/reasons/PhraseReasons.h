#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "reasons/ReasonRow.h"
#include "reasons/ReplyText.h"

namespace bouncecheck {

/// How much a phrase says, which is a table of its own.
enum class PhraseKind {
    /// It says why, whatever the code says.
    clear,
    /// It says why unless the code says it better.
    fair,
    /// It hints at why; not enough to stop mailing an address, unless a code or the party that it
    /// is said of agrees.
    hint,
};
inline constexpr std::size_t phraseKinds = 3;

/// The rows of a table, in the order in which they count.
std::vector<PhraseRow> phraseRows(PhraseKind kind);

/// The phrases of the tables that stand in a text, found in one pass. Refers to the text.
class PhraseMatches {
public:
    /// `text` is a reply, or words about one, as they stand in a message.
    explicit PhraseMatches(std::string_view text);

    /// The text as it was searched.
    std::string_view plain() const noexcept { return text_.view(); }
    /// The first row of a table that stands in the text, if one does.
    std::optional<PhraseRow> firstOf(PhraseKind kind) const noexcept;
    /// Where in the text that row stands first.
    TextPart placeOfFirst(PhraseKind kind) const;
    /// Whether the text says that a system has given up after trying for long, or that what it
    /// is about is temporary.
    bool saysTemporary() const noexcept { return saysTemporary_; }

private:
    struct Collector;

    ReplyText text_;
    /// The first row of each kind, the end of the kind without one, and where it stands first in
    /// the plain text.
    std::array<std::size_t, phraseKinds> first_;
    std::array<std::size_t, phraseKinds> places_{};
    bool saysTemporary_ = false;
};

}  // namespace bouncecheck
