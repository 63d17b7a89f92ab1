#include "reasons/TopicWords.h"

#include <algorithm>
#include <iterator>

#include "reasons/tables/TopicWords.h"
#include "text/Ascii.h"
#include "text/ByteSet.h"

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

constexpr ByteSet wordBytes = bytesWhere(ascii::isAlnum);
/// What the words of the table begin with.
constexpr ByteSet wordStarts = bytesWhere([](char c) {
    return std::ranges::any_of(
        topicWords, [&](const PhraseRow& row) { return row.phrase[0] == ascii::toLower(c); });
});

const PhraseRow* rowOf(std::string_view word) noexcept {
    if (word.empty() || !wordStarts.contains(word[0])) return nullptr;
    const auto* row = std::ranges::find_if(topicWords, [&](const PhraseRow& known) {
        return ascii::equalsNoCase(known.phrase, word);
    });
    return row == std::end(topicWords) ? nullptr : row;
}

/// What stands around the byte `at` of `text` without a blank.
std::string_view tokenAt(std::string_view text, std::size_t at) noexcept {
    std::size_t begin = at;
    while (begin > 0 && !ascii::isSpace(text[begin - 1])) --begin;
    while (at < text.size() && !ascii::isSpace(text[at])) ++at;
    return text.substr(begin, at - begin);
}

}  // namespace

std::span<const PhraseRow> allTopicWords() noexcept { return topicWords; }

std::optional<Topic> topicOf(std::string_view text) noexcept {
    const PhraseRow* best = nullptr;
    std::size_t place = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = lengthOf(wordBytes, text.substr(at));
        const PhraseRow* row = rowOf(text.substr(at, length));
        if (row && (!best || row < best)) {
            const std::string_view token = tokenAt(text, at);
            if (isName(token)) {
                at = static_cast<std::size_t>(token.data() + token.size() - text.data());
                continue;
            }
            best = row;
            place = at;
        }
        at += length + 1;
    }
    return best ? std::optional(Topic{*best, place}) : std::nullopt;
}

}  // namespace bouncecheck
