#include "reasons/ClauseStart.h"

#include <algorithm>

#include "reasons/Words.h"
#include "reasons/tables/SentenceWords.h"
#include "text/Ascii.h"

namespace bouncecheck {
namespace {

/// Whether `text` ends with the colon, or dash, behind "Sender" or "Sender address".
bool endsWithNamedSender(std::string_view text) {
    if (text.empty() || !ascii::isOneOf(text.back(), ":-")) return false;
    text = unquoted(text);
    if (isOneOf(lastWord(text), subjectEnds)) text = unquoted(withoutLastWord(text));
    const std::string_view word = lastWord(text);
    // "Returned to sender: user unknown"
    return isOneOf(word, otherSubjects) &&
           !ascii::equalsNoCase(lastWord(withoutLastWord(text)), "to");
}

}  // namespace

bool isCode(std::string_view word) {
    // "smtp;550", "#550"
    word = word.substr(word.find_last_of(";#") + 1);
    return std::ranges::all_of(word, [](char c) { return ascii::isDigit(c) || c == '.'; });
}

bool endsJoined(std::string_view text, char joint) {
    if (text.size() < 2 || text.back() != joint) return false;
    const char before = text[text.size() - 2];
    return ascii::isAlpha(before) || !ascii::isAscii(before);
}

bool endsWithSender(std::string_view text) {
    if (endsJoined(text, '-') && isOneOf(lastWord(unquoted(text)), otherParts)) return true;
    text = ascii::trimRight(text);
    if (isOneOf(lastWord(text), articles)) text = withoutLastWord(text);
    return endsWithNamedSender(text);
}

bool beginsWords(std::string_view text) {
    if (text.empty()) return true;
    if (ascii::isOneOf(text.back(), ":.;,)]>-\"'")) return !endsWithSender(text);
    const std::string_view word = lastWord(text);
    if (isCode(word)) return true;
    // "It is possible that user ann does not exist"
    return isOneOf(word, openers) && !isOneOf(lastWord(withoutLastWord(text)), conditions);
}

bool beginsClause(std::string_view text) {
    if (endsJoined(text, '-')) return false;  // "Web-Adresse"
    if (endsJoined(text, '\'')) {
        // "L'adresse", but not "le domaine de l'adresse" nor "nom d'utilisateur"
        const std::size_t begin = text.find_last_of(" \t\r\n") + 1;
        return ascii::equalsNoCase(text.substr(begin), "l'") &&
               beginsWords(ascii::trimRight(text.substr(0, begin)));
    }
    text = ascii::trimRight(text);
    if (beginsWords(text)) return true;
    if (isOneOf(lastWord(text), attributes)) {
        text = withoutLastWord(text);
        if (beginsWords(text)) return true;
    }
    return isOneOf(lastWord(text), articles) && beginsWords(withoutLastWord(text));
}

}  // namespace bouncecheck
