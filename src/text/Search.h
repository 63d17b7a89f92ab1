#pragma once

#include <cstddef>
#include <string_view>

#include <bouncecheck/LetterCase.h>

#include "text/Ascii.h"

/// Substring search over texts of known length: NUL bytes are ordinary, and
/// the time is linear in text plus needle whatever they hold.
namespace bouncecheck {

inline constexpr std::size_t npos = std::string_view::npos;

/// The trailing flag of the text operations: true ignores letter case.
constexpr LetterCase letterCase(bool ignoreCase) noexcept {
    return ignoreCase ? LetterCase::ignored : LetterCase::exact;
}

/// The first position of `needle` in `text` at or after `from`, or npos.
/// An empty needle is found at `from` as long as that is not past the end.
std::size_t findBytes(std::string_view text, std::string_view needle,
                      std::size_t from = 0) noexcept;

/// The same with the case of ASCII letters ignored.
std::size_t findBytesNoCase(std::string_view text, std::string_view needle, std::size_t from = 0);

inline std::size_t findBytes(std::string_view text, std::string_view needle, std::size_t from,
                             LetterCase letters) {
    return letters == LetterCase::ignored ? findBytesNoCase(text, needle, from)
                                          : findBytes(text, needle, from);
}

/// The first position at or after `from` where `first` stands right before `second`, or npos. Bytes
/// that are frequent but seldom stand together, as line ends and what mail has few lines begin
/// with, are found several times as fast as by a search for either.
std::size_t findPair(std::string_view text, char first, char second, std::size_t from) noexcept;

inline bool contains(std::string_view text, std::string_view needle) noexcept {
    return findBytes(text, needle) != npos;
}

inline bool containsNoCase(std::string_view text, std::string_view needle) {
    return findBytesNoCase(text, needle) != npos;
}

/// Whether `text` begins with `prefix`.
constexpr bool startsWith(std::string_view text, std::string_view prefix,
                          LetterCase letters) noexcept {
    return letters == LetterCase::ignored ? ascii::startsWithNoCase(text, prefix)
                                          : text.starts_with(prefix);
}

}  // namespace bouncecheck
