#include "reasons/NamedParty.h"

#include <algorithm>
#include <optional>

#include "reasons/ReplyText.h"
#include "reasons/tables/SentenceWords.h"
#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

constexpr std::string_view quotes = " \t\r\n[](){}<>\"':;,=#-";

constexpr std::size_t longestIp = 39;

bool isIpByte(char c) {
    return ascii::isDigit(c) || (ascii::toLower(c) >= 'a' && ascii::toLower(c) <= 'f') ||
           c == '.' || c == ':';
}

/// Whether `word` is an IP address, or a network of them: "192.0.2.0/24".
bool isIp(std::string_view word) {
    word = word.substr(0, word.find('/'));
    if (word.empty() || word.size() > longestIp) return false;
    if (std::ranges::count(word, ':') >= 2) return std::ranges::all_of(word, isIpByte);
    return std::ranges::count(word, '.') == 3 &&
           std::ranges::all_of(word, [](char c) { return ascii::isDigit(c) || c == '.'; });
}

bool isOneOf(std::string_view word, std::span<const std::string_view> words) {
    return std::ranges::any_of(
        words, [&](std::string_view known) { return ascii::equalsNoCase(word, known); });
}

bool isLink(std::string_view word) { return isOneOf(word, linkWords); }
bool isArticle(std::string_view word) { return isOneOf(word, articles); }
bool isHostLink(std::string_view word) { return isLink(word) || isOneOf(word, hostLinkWords); }

std::string_view unquoted(std::string_view text) {
    const std::size_t begin = std::min(text.find_first_not_of(quotes), text.size());
    const std::size_t end = text.find_last_not_of(quotes);
    return end == std::string_view::npos ? std::string_view() : text.substr(begin, end + 1 - begin);
}

/// The last word of `text`.
std::string_view lastWord(std::string_view text) {
    return text.substr(text.find_last_of(" \t\r\n[(<\"'") + 1);
}

/// `text` without `end`, with which it ends.
std::string_view withoutEnd(std::string_view text, std::string_view end) {
    return text.substr(0, text.size() - end.size());
}

/// `text` up to its last word for which `isBetween` is false.
std::string_view withoutBetween(std::string_view text, bool (*isBetween)(std::string_view)) {
    text = unquoted(text);
    for (std::string_view word = lastWord(text); !word.empty() && isBetween(word);
         word = lastWord(text)) {
        text = unquoted(withoutEnd(text, word));
    }
    return text;
}

/// Those of a reply; also "", for the start of the text.
bool isCode(std::string_view word) {
    return std::ranges::all_of(word, [](char c) { return ascii::isDigit(c) || c == '.'; });
}

/// Whether `text` ends with a letter and `joint`, by which the next word is a part of this one.
bool endsJoined(std::string_view text, char joint) {
    if (text.size() < 2 || text.back() != joint) return false;
    const char before = text[text.size() - 2];
    return ascii::isAlpha(before) || !ascii::isAscii(before);
}

/// Whether `text` ends with the colon, or dash, behind "Sender" or "Sender address".
bool endsWithNamedSender(std::string_view text) {
    if (text.empty() || !ascii::isOneOf(text.back(), ":-")) return false;
    text = unquoted(text);
    if (isOneOf(lastWord(text), subjectEnds)) text = unquoted(withoutEnd(text, lastWord(text)));
    const std::string_view word = lastWord(text);
    // "Returned to sender: user unknown"
    return isOneOf(word, otherSubjects) &&
           !ascii::equalsNoCase(lastWord(ascii::trimRight(withoutEnd(text, word))), "to");
}

/// Whether `text` ends with "Sender:", an article aside, or with "Host-" as in "Host-Adresse".
bool endsWithOtherSubject(std::string_view text) {
    if (endsJoined(text, '-') && isOneOf(lastWord(unquoted(text)), otherParts)) return true;
    text = ascii::trimRight(text);
    const std::string_view word = lastWord(text);
    if (isOneOf(word, articles)) {
        text = ascii::trimRight(withoutEnd(text, word));
    }
    return endsWithNamedSender(text);
}

/// Whether a sentence, or a clause of one, begins behind `text`.
bool beginsWords(std::string_view text) {
    if (text.empty()) return true;
    if (ascii::isOneOf(text.back(), ":.;,)]>-\"'")) return !endsWithOtherSubject(text);
    const std::string_view word = lastWord(text);
    if (isCode(word)) return true;
    // "It is possible that user ann does not exist"
    return isOneOf(word, openers) &&
           !isOneOf(lastWord(ascii::trimRight(withoutEnd(text, word))), conditions);
}

/// The same, an article aside: what is in front is no "of the" or "for", nor a "sender".
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
    std::string_view word = lastWord(text);
    if (isOneOf(word, attributes)) {
        text = ascii::trimRight(withoutEnd(text, word));
        if (beginsWords(text)) return true;
        word = lastWord(text);
    }
    return isOneOf(word, articles) && beginsWords(ascii::trimRight(withoutEnd(text, word)));
}

bool beginsWithIp(std::string_view text) {
    for (;;) {
        text = unquoted(text);
        const std::string_view word = text.substr(0, text.find_first_of(" \t\r\n])>,;"));
        const std::string_view name = word.substr(0, word.find_last_not_of(".:") + 1);
        if (isIp(name)) return true;
        if (!isHostLink(name)) return false;
        text = text.substr(word.size());
    }
}

/// Far more than the words between, so that time is linear.
constexpr std::size_t most = 256;

std::string_view textBefore(std::string_view text, std::size_t at) {
    const std::size_t begin = at < most ? 0 : at - most;
    return text.substr(begin, at - begin);
}

/// What is in front of `name`, where the words at the byte `at` are said of it.
std::optional<std::string_view> textBeforeName(std::string_view text, std::size_t at,
                                               std::string_view name) {
    const std::string_view said = withoutBetween(textBefore(text, at), isLink);
    const std::string_view last = lastWord(said);
    if (name.empty() || !ascii::equalsNoCase(last, name)) return std::nullopt;
    return unquoted(withoutEnd(said, last));
}

/// What is in front of one of `kinds`, by which `text` ends: "user", "user ID", "email account".
std::optional<std::string_view> withoutKind(std::string_view text,
                                            std::span<const std::string_view> kinds) {
    text = ascii::trimRight(text);
    if (isOneOf(lastWord(text), kindEnds)) {
        const std::string_view kind = ascii::trimRight(withoutEnd(text, lastWord(text)));
        if (isOneOf(lastWord(kind), kinds)) text = kind;
    }
    if (!isOneOf(lastWord(text), kinds)) return std::nullopt;
    text = withoutEnd(text, lastWord(text));
    const std::string_view front = ascii::trimRight(text);
    const std::string_view word = lastWord(front);
    if (!isOneOf(word, kinds) && !isOneOf(word, kindStarts)) return text;
    return withoutEnd(front, word);
}

}  // namespace

bool isSaidOfHost(std::string_view text, std::size_t at, std::size_t length) {
    return isIp(lastWord(withoutBetween(textBefore(text, at), isHostLink))) ||
           beginsWithIp(text.substr(at + length, most));
}

bool isSaidOf(std::string_view text, std::size_t at, std::string_view name,
              std::span<const std::string_view> kinds) {
    const std::optional<std::string_view> front = textBeforeName(text, at, name);
    if (!front) return false;
    if (isCode(lastWord(*front))) return !isOneOf(name, notMailboxes);
    const std::optional<std::string_view> rest = withoutKind(*front, kinds);
    return rest && beginsClause(*rest);
}

bool isSaidOfOwned(std::string_view text, std::size_t at, std::string_view name,
                   std::span<const std::string_view> kinds) {
    std::optional<std::string_view> front = textBeforeName(text, at, name);
    if (!front) return false;
    front = unquoted(withoutKind(*front, kinds).value_or(*front));
    const std::string_view word = lastWord(*front);
    if (!isOneOf(word, genitives)) return false;
    const auto rest = withoutKind(withoutEnd(*front, word), kinds);
    return rest && beginsClause(*rest);
}

bool isSaidOfKind(std::string_view text, std::size_t at, std::span<const std::string_view> kinds) {
    const std::string_view said = withoutBetween(textBefore(text, at), isLink);
    // Kinds stand in the tables as ReplyText has them, whose parts have other lengths.
    constexpr int mostWords = 6;
    int words = 0;
    for (std::size_t begin = said.size(); begin > 0 && words < mostWords;) {
        --begin;
        const char front = begin > 0 ? said[begin - 1] : ' ';
        if (!ascii::isAscii(front) || ascii::isAlnum(front)) continue;
        ++words;
        const ReplyText kind(said.substr(begin));
        if (isOneOf(kind.view(), kinds) && beginsClause(said.substr(0, begin))) return true;
    }
    return false;
}

bool isSaidOfNamedKind(std::string_view text, std::size_t at, std::string_view name,
                       std::span<const std::string_view> kinds) {
    const std::optional<std::string_view> front = textBeforeName(text, at, name);
    return front && isSaidOfKind(*front, front->size(), kinds);
}

bool isSaidOfPart(std::string_view text, std::size_t at, std::span<const std::string_view> kinds) {
    std::string_view front = textBefore(text, at);
    if (endsJoined(front, '\'')) front.remove_suffix(2);  // "de l'"
    std::string_view said = withoutBetween(front, isArticle);
    front = ascii::trimRight(front);
    const bool leadsThere = ascii::equalsNoCase(lastWord(front), "to");
    if (leadsThere && isOneOf(lastWord(said), notMailboxes)) {
        return !isOneOf(lastWord(said), addressWords);
    }
    const bool isAnnounced = front.ends_with(':');
    if (isAnnounced && isOneOf(lastWord(said), genitives)) return false;  // "failed with: user"
    if (isOneOf(lastWord(said), namedThings)) return true;
    if (isOneOf(lastWord(said), kinds)) {
        // "user a@x.example"
        said = withoutBetween(withoutEnd(said, lastWord(said)), isArticle);
    }
    const std::string_view word = lastWord(said);
    if (!isOneOf(word, genitives)) return false;
    const std::string_view whose = ascii::trimRight(withoutEnd(said, word));
    return !beginsWords(whose) && !isOneOf(lastWord(whose), kinds) &&
           !isOneOf(lastWord(whose), addressWords);
}

bool isSupposed(std::string_view text, std::size_t at) {
    std::string_view front = textBefore(text, at);
    if (endsJoined(front, '\'')) front.remove_suffix(2);  // "se l'utente"
    const auto isBetween = [](std::string_view word) {
        return isArticle(word) || isOneOf(word, attributes) || isOneOf(word, addressWords);
    };
    const std::string_view said = withoutBetween(front, isBetween);
    return isOneOf(lastWord(said), conditions) ||
           std::ranges::any_of(joinedConditions,
                               [&](std::string_view words) { return said.ends_with(words); });
}

bool isSaidOfNothingElse(std::string_view text, std::size_t at,
                         std::span<const std::string_view> kinds) {
    const std::string_view front = textBefore(text, at);
    return beginsClause(front) || isOneOf(lastWord(withoutBetween(front, isLink)), pronouns) ||
           isSaidOfKind(text, at, kinds);
}

bool isSaidOfSender(std::string_view text, std::size_t at) {
    return endsWithOtherSubject(textBefore(text, at));
}

bool goesOnOtherwise(std::string_view text, std::size_t at) {
    const std::string_view behind = text.substr(at);
    const std::string_view rest = ascii::trimLeft(behind);
    const bool isNextLine = behind.substr(0, behind.size() - rest.size()).find('\n') != npos;
    // "Script finished", below "User unknown", is another sentence.
    if (isNextLine && !rest.empty() && rest[0] >= 'A' && rest[0] <= 'Z') return false;
    return std::ranges::any_of(
        otherEnds, [&](std::string_view words) { return ascii::startsWithNoCase(rest, words); });
}

bool endsClause(std::string_view text, std::size_t at) {
    const std::string_view behind = text.substr(at);
    const std::string_view rest = ascii::trimLeft(behind);
    if (rest.empty() || ascii::isOneOf(behind[0], "\r\n")) return true;
    const auto begins = [&](std::string_view words) {
        return ascii::startsWithNoCase(rest, words);
    };
    return ascii::isOneOf(rest[0], ".,;!)]>\"'") ||
           (std::ranges::any_of(closings, begins) && !goesOnOtherwise(text, at));
}

bool isFollowedBy(std::string_view text, std::size_t at, std::string_view name) {
    const std::string_view behind = unquoted(text.substr(at, most));
    if (name.empty() || !ascii::startsWithNoCase(behind, name)) return false;
    const std::size_t domain = name.size() < behind.size() && behind[name.size()] == '@'
                                   ? behind.find_first_of(" \t\r\n>,;:\"'", name.size())
                                   : name.size();
    const auto end =
        static_cast<std::size_t>(behind.data() - text.data()) + std::min(domain, behind.size());
    // "I do not know ann's key"
    return !text.substr(end).starts_with("'s") && endsClause(text, end);
}

bool isNamed(std::string_view text, std::string_view host) {
    constexpr std::size_t longestHost = 255;  // RFC 1035, section 2.3.4
    if (host.empty() || host.size() > longestHost) return false;
    const auto isInName = [](char c) { return ascii::isAlnum(c) || c == '-'; };
    for (std::size_t at = 0; (at = findBytesNoCase(text, host, at)) != npos; at += host.size()) {
        const char before = at > 0 ? text[at - 1] : ' ';
        const std::string_view behind = text.substr(at + host.size());
        const bool begins = !isInName(before) && before != '@';
        // A dot may end the sentence.
        const bool goesOn = !behind.empty() &&
                            (isInName(behind[0]) ||
                             (behind.size() > 1 && behind[0] == '.' && ascii::isAlnum(behind[1])));
        if (begins && !goesOn) return true;
    }
    return false;
}

}  // namespace bouncecheck
