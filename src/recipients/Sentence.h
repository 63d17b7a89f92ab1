#pragma once

#include <cstddef>
#include <string_view>

#include "mime/AddressSpans.h"

namespace bouncecheck {

/// What `line` says from the start of `sentence`, which names `address`, on, as far as it is near
/// and names nobody else. A reply may follow in a sentence of its own.
std::string_view wordsFrom(std::string_view line, std::string_view sentence,
                           std::string_view address);

/// Whether `sentence` supposes something rather than saying it: "If your mail did not arrive".
bool beginsWithCondition(std::string_view sentence);

/// Whether `text` ends where a sentence does.
bool endsSentence(std::string_view text) noexcept;

/// The sentence of `line` that `span` stands in, or what of it is near.
std::string_view sentenceOf(std::string_view line, const AddressSpan& span);

}  // namespace bouncecheck
