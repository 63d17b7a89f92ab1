#include "reasons/NamedHost.h"

#include <algorithm>

#include "reasons/Words.h"
#include "reasons/tables/SentenceWords.h"
#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

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

bool isHostLink(std::string_view word) { return isLink(word) || isOneOf(word, hostLinkWords); }

/// Whether `text` begins with the address of a host, after words like "from".
bool beginsWithIp(std::string_view text) {
    for (;;) {
        text = unquoted(text);
        const std::string_view word = text.substr(0, text.find_first_of(" \t\r\n])>,;\"'"));
        const std::string_view name = word.substr(0, word.find_last_not_of(".:") + 1);
        if (isIp(name)) return true;
        if (!isHostLink(name)) return false;
        text = text.substr(word.size());
    }
}

}  // namespace

bool isSaidOfHost(std::string_view text, std::size_t at, std::size_t length) {
    return isIp(lastWord(withoutBetween(textBefore(text, at), isHostLink))) ||
           beginsWithIp(text.substr(at + length, sentenceReach));
}

bool isHostNamed(std::string_view text, std::string_view host) {
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
