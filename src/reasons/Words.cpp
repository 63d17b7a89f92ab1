#include "reasons/Words.h"

#include <algorithm>

#include "reasons/tables/SentenceWords.h"
#include "text/Ascii.h"

namespace bouncecheck {
namespace {

constexpr std::string_view quotes = " \t\r\n[](){}<>\"':;,=#-";

}  // namespace

bool isOneOf(std::string_view word, std::span<const std::string_view> words) {
    return std::ranges::any_of(
        words, [&](std::string_view known) { return ascii::equalsNoCase(word, known); });
}

std::string unfolded(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (;;) {
        const std::size_t end = text.find('\n');
        if (end == std::string_view::npos) return line.append(text);
        line.append(ascii::trimRight(text.substr(0, end))) += ' ';
        text = ascii::trimLeft(text.substr(end + 1));
    }
}

bool beginsWithWords(std::string_view text, std::string_view words) {
    for (const char c : words) {
        if (text.empty()) return false;
        if (c == ' ' && ascii::isSpace(text.front())) {
            text = ascii::trimLeft(text);
        } else if (ascii::toLower(text.front()) == ascii::toLower(c)) {
            text.remove_prefix(1);
        } else {
            return false;
        }
    }
    return true;
}

std::string_view unquoted(std::string_view text) {
    const std::size_t begin = std::min(text.find_first_not_of(quotes), text.size());
    const std::size_t end = text.find_last_not_of(quotes);
    return end == std::string_view::npos ? std::string_view() : text.substr(begin, end + 1 - begin);
}

std::string_view lastWord(std::string_view text) {
    return text.substr(text.find_last_of(" \t\r\n[(<\"'") + 1);
}

std::string_view withoutLastWord(std::string_view text) {
    return ascii::trimRight(withoutEnd(text, lastWord(text)));
}

std::string_view withoutBetween(std::string_view text, bool (*isBetween)(std::string_view)) {
    text = unquoted(text);
    for (std::string_view word = lastWord(text); !word.empty() && isBetween(word);
         word = lastWord(text)) {
        text = unquoted(withoutEnd(text, word));
    }
    return text;
}

bool isLink(std::string_view word) { return isOneOf(word, linkWords); }

std::string_view textBefore(std::string_view text, std::size_t at) {
    const std::size_t begin = at < sentenceReach ? 0 : at - sentenceReach;
    return text.substr(begin, at - begin);
}

}  // namespace bouncecheck
