#include "recipients/Sentence.h"

#include <algorithm>
#include <array>

#include "reasons/CodeShapes.h"
#include "recipients/tables/LineMarks.h"
#include "text/Ascii.h"
#include "text/Search.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

constexpr auto stops = std::to_array<std::string_view>({". ", "! ", wideStop, wideComma});

/// `text` without its last line, where that begins with the code of a reply: the start of one may
/// say less than all of it.
std::string_view withoutStartOfReply(std::string_view text) {
    const std::string_view line = text.substr(text.find_last_of("\r\n") + 1);
    const bool isReply = replyCodeLength(ascii::trimLeft(line), 0) > 0;
    return isReply ? text.substr(0, text.size() - line.size()) : text;
}

/// Whether the sign at `at` of `text` is that of `address`.
bool isAt(std::string_view text, std::size_t at, std::string_view address) {
    const std::size_t sign = address.rfind('@');
    return sign != npos && at >= sign && ascii::startsWithNoCase(text.substr(at - sign), address);
}

}  // namespace

bool endsSentence(std::string_view text) noexcept {
    return text.ends_with('.') || text.ends_with('!') || text.ends_with(wideStop) ||
           text.ends_with(wideComma);
}

bool beginsWithCondition(std::string_view sentence) {
    return std::ranges::any_of(conditionWords, [&](std::string_view word) {
        return ascii::startsWithNoCase(sentence, word) && sentence.size() > word.size() &&
               sentence[word.size()] == ' ';
    });
}

std::string_view wordsFrom(std::string_view line, std::string_view sentence,
                           std::string_view address) {
    constexpr std::size_t near = 600;
    const auto begin = static_cast<std::size_t>(sentence.data() - line.data());
    const std::size_t end = begin + sentence.size();
    std::string_view after = wholeCharacters(line.substr(end), near);
    // Not even the start of another address.
    std::size_t at = after.find('@');
    while (at != npos && isAt(after, at, address)) at = after.find('@', at + 1);
    if (at != npos) {
        const std::size_t cut = after.substr(0, at).find_last_of(" \t") + 1;
        // "550 User unknown", "(b@y.example)"
        const bool isInBrackets = after[cut] == '(';
        after = after.substr(0, cut);
        after = withoutStartOfReply(isInBrackets ? ascii::trimRight(after) : after);
    }
    return ascii::trimRight(line.substr(begin, sentence.size() + after.size()));
}

std::string_view sentenceOf(std::string_view line, const AddressSpan& span) {
    constexpr std::size_t near = 300;
    std::size_t first = span.begin - std::min(span.begin, near);
    while (first < span.begin && continuesCharacter(line[first])) ++first;
    const std::string_view before = line.substr(first, span.begin - first);
    const std::string_view after = wholeCharacters(line.substr(span.end), near);
    std::size_t begin = first;
    std::size_t end = span.end + after.size();
    for (const std::string_view stop : stops) {
        const std::size_t last = before.rfind(stop);
        if (last != npos) begin = std::max(begin, first + last + stop.size());
        end = std::min(end, span.end + std::min(after.find(stop), after.size()));
    }
    return ascii::trim(line.substr(begin, end - begin));
}

}  // namespace bouncecheck
