#include "reasons/TopicWords.h"

#include <algorithm>
#include <iterator>

#include "reasons/tables/TopicWords.h"
#include "text/Ascii.h"

namespace bouncecheck {
namespace {

/// Whether `token`, which has no blanks, is the name of something in the net: a byte that is no
/// letter and no digit stands within it as in "a.b", or it has "@" or "://".
bool isName(std::string_view token) noexcept {
    for (std::size_t i = 1; i + 1 < token.size(); ++i) {
        if (token[i] == '@' || token[i] == '_') return true;
        if (token[i] == '.' && ascii::isAlnum(token[i - 1]) && ascii::isAlnum(token[i + 1])) {
            return true;
        }
    }
    return token.find("://") != std::string_view::npos;
}

const PhraseRow* rowOf(std::string_view word) noexcept {
    const auto* row = std::ranges::find_if(topicWords, [&](const PhraseRow& known) {
        return ascii::equalsNoCase(known.phrase, word);
    });
    return row == std::end(topicWords) ? nullptr : row;
}

/// Calls `visit(part, at)` for the stretches of `text` for whose bytes `holds` is true.
template <class Holds, class Visit>
void forEachPart(std::string_view text, Holds holds, Visit visit) {
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = at;
        while (end < text.size() && holds(text[end])) ++end;
        if (end > at) visit(text.substr(at, end - at), at);
        at = end + 1;
    }
}

}  // namespace

std::span<const PhraseRow> allTopicWords() noexcept { return topicWords; }

std::optional<Topic> topicOf(std::string_view text) noexcept {
    const PhraseRow* best = nullptr;
    std::size_t place = 0;
    const auto visitWord = [&](std::string_view word, std::size_t at) {
        const PhraseRow* row = rowOf(word);
        if (!row || (best && row >= best)) return;
        best = row;
        place = at;
    };
    const auto visitToken = [&](std::string_view token, std::size_t at) {
        if (isName(token)) return;
        forEachPart(token, ascii::isAlnum,
                    [&](std::string_view word, std::size_t in) { visitWord(word, at + in); });
    };
    forEachPart(
        text, [](char c) { return !ascii::isSpace(c); }, visitToken);
    return best ? std::optional(Topic{*best, place}) : std::nullopt;
}

}  // namespace bouncecheck
