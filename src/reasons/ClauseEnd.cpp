#include "reasons/ClauseEnd.h"

#include <algorithm>

#include "reasons/Words.h"
#include "reasons/tables/SentenceWords.h"
#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {

bool goesOnOtherwise(std::string_view text, std::size_t at) {
    const std::string_view behind = text.substr(at);
    const std::string_view rest = ascii::trimLeft(behind);
    const bool isNextLine = behind.substr(0, behind.size() - rest.size()).find('\n') != npos;
    // "Script finished", below "User unknown", is another sentence.
    if (isNextLine && !rest.empty() && rest[0] >= 'A' && rest[0] <= 'Z') return false;
    return std::ranges::any_of(
        otherEnds, [&](std::string_view words) { return beginsWithWords(rest, words); });
}

bool endsClause(std::string_view text, std::size_t at) {
    const std::string_view behind = text.substr(at);
    const std::string_view rest = ascii::trimLeft(behind);
    // A line that goes on in small letters was folded there.
    const bool isFolded = !rest.empty() && rest[0] >= 'a' && rest[0] <= 'z';
    if (rest.empty() || (ascii::isOneOf(behind[0], "\r\n") && !isFolded)) return true;
    const auto begins = [&](std::string_view words) { return beginsWithWords(rest, words); };
    return ascii::isOneOf(rest[0], ".,;!)]>\"'#") ||
           (std::ranges::any_of(closings, begins) && !goesOnOtherwise(text, at));
}

bool isFollowedBy(std::string_view text, std::size_t at, std::string_view name) {
    const std::string_view behind = unquoted(text.substr(at, sentenceReach));
    if (name.empty() || !ascii::startsWithNoCase(behind, name)) return false;
    const std::size_t domain = name.size() < behind.size() && behind[name.size()] == '@'
                                   ? behind.find_first_of(" \t\r\n>,;:\"'", name.size())
                                   : name.size();
    const auto end =
        static_cast<std::size_t>(behind.data() - text.data()) + std::min(domain, behind.size());
    // "I do not know ann's key"
    return !text.substr(end).starts_with("'s") && endsClause(text, end);
}

}  // namespace bouncecheck
