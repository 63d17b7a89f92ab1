#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include <bouncecheck/Match.h>
#include "bounce/PhraseBook.h"
#include "phrases/Catalog.h"

namespace bouncecheck {

/// Where each marker of a text stands first.
using MarkerPlaces = std::array<std::size_t, book::markerCount>;

/// A text of a message, and which phrases of the tables stand in it. They are found in
/// one pass, when the first question is asked; every question after that is a look-up.
///
/// Refers to the text, which must not change meanwhile.
class ScannedText {
public:
    /// `places` is for a text whose markers are asked for.
    ScannedText(TextOf kind, std::string_view text, phrases::Engine engine,
                MarkerPlaces* places = nullptr) noexcept
        : kind_(kind), text_(text), engine_(engine), places_(places) {}
    ScannedText(const ScannedText&) = delete;
    ScannedText& operator=(const ScannedText&) = delete;

    std::string_view view() const noexcept { return text_; }
    TextOf kind() const noexcept { return kind_; }

    /// The first phrase in the order of the list that the text holds.
    Match firstOf(ListId list) const;
    /// The first single phrase of a purpose that it holds, whatever text that is for.
    Match firstOf(SingleId singles) const;
    /// One single phrase, by its row.
    Match single(std::size_t row) const;

    /// The index of the first pattern of the list at or after `from` that may match the
    /// text; npos when there is none.
    std::size_t nextPattern(ListId patterns, std::size_t from) const;
    /// Whether the phrase of a row of BounceRules may stand in the text.
    bool mayHaveRulePhrase(std::size_t rule) const;

    /// The index of the first marker at or after `from` that stands in the text
    /// and whose context does; npos when there is none.
    std::size_t nextMarker(std::size_t from) const;
    /// The first place of that marker.
    std::size_t markerPlace(std::size_t marker) const;

private:
    const phrases::RowSet& found() const { return found_ ? *found_ : scan(); }
    const phrases::RowSet& scan() const;
    bool holds(std::size_t row) const;

    TextOf kind_;
    std::string_view text_;
    phrases::Engine engine_;
    MarkerPlaces* places_;
    mutable std::optional<phrases::RowSet> found_;
};

}  // namespace bouncecheck
