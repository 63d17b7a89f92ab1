#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace bouncecheck {

/// Whether `word` is one of `words`, letter case ignored (for ASCII).
bool isOneOf(std::string_view word, std::span<const std::string_view> words);

/// `text` in one line: a blank for each line end and the white space around it.
std::string unfolded(std::string_view text);

/// Whether `text` begins with `words`, in any letter case, however it was folded: a blank stands
/// for any white space.
bool beginsWithWords(std::string_view text, std::string_view words);

/// `text` without blanks, quotes, brackets and marks at both ends.
std::string_view unquoted(std::string_view text);

/// The last word of `text`, with the marks behind it; "" where it ends with a blank.
std::string_view lastWord(std::string_view text);

/// `text` without `end`, with which it ends.
inline std::string_view withoutEnd(std::string_view text, std::string_view end) {
    return text.substr(0, text.size() - end.size());
}

/// `text` up to its last word, without the blanks in front of that.
std::string_view withoutLastWord(std::string_view text);

/// `text`, unquoted, up to its last word for which `isBetween` is false.
std::string_view withoutBetween(std::string_view text, bool (*isBetween)(std::string_view));

/// What stands between a name and what is said of it: "is", "has been".
bool isLink(std::string_view word);

/// How far around the words of a reply the sentence is looked at: far more than it has, so that
/// time is linear.
inline constexpr std::size_t sentenceReach = 256;

/// What stands in front of the byte `at` of `text`.
std::string_view textBefore(std::string_view text, std::size_t at);

}  // namespace bouncecheck
