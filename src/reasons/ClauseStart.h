#pragma once

#include <string_view>

namespace bouncecheck {

/// Whether a word is a code of a reply; also "", the start of the text.
bool isCode(std::string_view word);

/// Whether `text` ends with a letter and `joint`, by which the next word is a part of this one.
bool endsJoined(std::string_view text, char joint);

/// Whether `text` ends with "Sender:", or what else belongs to the sender's side, an article aside,
/// or with "Host-" as in "Host-Adresse".
bool endsWithSender(std::string_view text);

/// Whether a sentence, or a clause of one, begins behind `text`.
bool beginsWords(std::string_view text);

/// The same where an article or an attribute may stand between: not behind "of the", "for" or
/// "sender".
bool beginsClause(std::string_view text);

}  // namespace bouncecheck
