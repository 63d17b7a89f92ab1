#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "reasons/ReasonRow.h"

namespace bouncecheck {

/// A word that says what a refusal is about.
struct Topic {
    PhraseRow row;
    /// Where it stands.
    std::size_t at = 0;
};

/// The words in the order in which they count.
std::span<const PhraseRow> allTopicWords() noexcept;

/// The first of them that stands in `text` as a word, and not in a URL, an address or the name
/// of a host: "Refused (SPF)", but not "spf.example.org". Linear in the text.
std::optional<Topic> topicOf(std::string_view text) noexcept;

}  // namespace bouncecheck
