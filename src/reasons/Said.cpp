#include "reasons/Said.h"

#include <algorithm>
#include <optional>

#include "reasons/ClauseStart.h"
#include "reasons/ReplyText.h"
#include "reasons/Words.h"
#include "reasons/tables/SentenceWords.h"
#include "text/Ascii.h"

namespace bouncecheck {
namespace {

bool isArticle(std::string_view word) { return isOneOf(word, articles); }

/// What is in front of `name`, where the words behind `front` are said of it.
std::optional<std::string_view> textBeforeName(std::string_view front, std::string_view name) {
    const std::string_view said = withoutBetween(front, isLink);
    const std::string_view last = lastWord(said);
    if (name.empty() || !ascii::equalsNoCase(last, name)) return std::nullopt;
    return unquoted(withoutEnd(said, last));
}

/// What is in front of one of `kinds`, by which `text` ends: "user", "user ID", "email account".
std::optional<std::string_view> withoutKind(std::string_view text,
                                            std::span<const std::string_view> kinds) {
    text = ascii::trimRight(text);
    if (isOneOf(lastWord(text), kindEnds)) {
        const std::string_view kind = withoutLastWord(text);
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

bool Said::isOf(std::string_view name, std::span<const std::string_view> kinds) const {
    const std::optional<std::string_view> front = textBeforeName(front_, name);
    if (!front) return false;
    if (isCode(lastWord(*front))) return !isOneOf(name, notMailboxes);
    const std::optional<std::string_view> rest = withoutKind(*front, kinds);
    return rest && beginsClause(*rest);
}

bool Said::isOfOwned(std::string_view name, std::span<const std::string_view> kinds) const {
    std::optional<std::string_view> front = textBeforeName(front_, name);
    if (!front) return false;
    front = unquoted(withoutKind(*front, kinds).value_or(*front));
    const std::string_view word = lastWord(*front);
    if (!isOneOf(word, genitives)) return false;
    const auto rest = withoutKind(withoutEnd(*front, word), kinds);
    return rest && beginsClause(*rest);
}

bool Said::isOfKind(std::span<const std::string_view> kinds) const {
    const std::string_view said = withoutBetween(front_, isLink);
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

bool Said::isOfNamedKind(std::string_view name, std::span<const std::string_view> kinds) const {
    const std::optional<std::string_view> front = textBeforeName(front_, name);
    return front && Said(*front, front->size()).isOfKind(kinds);
}

bool Said::isOfPart(std::span<const std::string_view> kinds) const {
    std::string_view front = front_;
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
    const std::string_view whose = withoutLastWord(said);
    return !beginsWords(whose) && !isOneOf(lastWord(whose), kinds) &&
           !isOneOf(lastWord(whose), addressWords);
}

bool Said::isSupposed() const {
    std::string_view front = front_;
    if (endsJoined(front, '\'')) front.remove_suffix(2);  // "se l'utente"
    const auto isBetween = [](std::string_view word) {
        return isArticle(word) || isOneOf(word, attributes) || isOneOf(word, addressWords);
    };
    const std::string_view said = withoutBetween(front, isBetween);
    return isOneOf(lastWord(said), conditions) ||
           std::ranges::any_of(joinedConditions,
                               [&](std::string_view words) { return said.ends_with(words); });
}

bool Said::isOfNothingElse(std::span<const std::string_view> kinds) const {
    return beginsClause(front_) || isOneOf(lastWord(withoutBetween(front_, isLink)), pronouns) ||
           isOfKind(kinds);
}

bool Said::isOfSender() const { return endsWithSender(front_); }

}  // namespace bouncecheck
