#pragma once

#include <cstddef>
#include <string_view>

#include "text/Search.h"
#include "text/StringBuffer.h"

namespace bouncecheck {

/// Answers which phrases stand in one text. All phrase tests of the classifier
/// are asked here, so that how they are answered can change in one place.
///
/// Refers to the text, which must not change meanwhile. A phrase ends at its
/// NUL; the text may hold NUL bytes.
class PhraseSearch {
public:
    explicit PhraseSearch(std::string_view text) noexcept : text_(text) {}
    explicit PhraseSearch(const StringBuffer& text) noexcept : text_(text.view()) {}

    bool has(std::string_view phrase) const noexcept { return contains(text_, phrase); }
    bool hasNoCase(std::string_view phrase) const { return containsNoCase(text_, phrase); }

    /// The first phrase in the order of `list` that the text holds, or null. The
    /// list ends at an empty phrase or null, or after `maxEntries`.
    const char* firstOf(const char* const* list, LetterCase letters,
                        std::size_t maxEntries = npos) const {
        for (std::size_t i = 0; i < maxEntries && list[i] && *list[i]; ++i) {
            if (findBytes(text_, list[i], 0, letters) != npos) return list[i];
        }
        return nullptr;
    }

private:
    std::string_view text_;
};

}  // namespace bouncecheck
