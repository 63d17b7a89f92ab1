#include "recipients/AddressSpans.h"

#include <algorithm>

#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// RFC 5321, section 4.5.3.1, allows 64 and 255 bytes; real ones are found to be longer. What is
/// longer than this is no address, and part of it would be that of somebody else.
constexpr std::size_t longestLocalPart = 256;
constexpr std::size_t longestDomain = 255;

constexpr bool isAtomByte(char c) noexcept {
    return ascii::isAlnum(c) || ascii::isOneOf(c, "!#$%&'*+-/=?^_`{|}~.") || !ascii::isAscii(c);
}
constexpr bool isDomainByte(char c) noexcept {
    return ascii::isAlnum(c) || c == '-' || c == '.' || c == '_' || !ascii::isAscii(c);
}

/// Whether `c` begins a character above U+05FF: of a script that is not mixed with Latin
/// letters in one word, so that one beside an ASCII address belongs to the sentence.
constexpr bool beginsOtherScript(char c) noexcept { return static_cast<unsigned char>(c) >= 0xD8; }

/// Where the local part before `at`, which does not begin before `least`, begins.
std::size_t beginOfLocalPart(std::string_view line, std::size_t at, std::size_t least) {
    least = std::max(least, at - std::min(at, longestLocalPart + 1));
    if (at > least + 1 && line[at - 1] == '"') {
        // The quote that opens it, past those that stand in it behind a backslash.
        for (std::size_t quote = at - 1; quote-- > least;) {
            if (line[quote] == '"' && (quote == least || line[quote - 1] != '\\')) return quote;
        }
        return at;
    }
    std::size_t begin = at;
    while (begin > least && isAtomByte(line[begin - 1])) --begin;
    // Letters of another script in front of an ASCII word are not part of it.
    std::size_t word = at;
    while (word > begin && ascii::isAscii(line[word - 1])) --word;
    if (word > begin && word < at) {
        std::size_t lead = word - 1;
        while (lead > begin && (static_cast<unsigned char>(line[lead]) & 0xC0) == 0x80) --lead;
        if (beginsOtherScript(line[lead])) begin = word;
    }
    return begin;
}

/// Where the domain that begins at `begin` ends; `begin` where there is none, or one too long.
std::size_t endOfDomain(std::string_view line, std::size_t begin) {
    if (begin < line.size() && line[begin] == '[') {
        const std::size_t end = line.substr(0, begin + longestDomain).find(']', begin);
        return end == npos ? begin : end + 1;
    }
    std::size_t end = begin;
    bool isAscii = true;
    while (end < line.size() && end - begin <= longestDomain && isDomainByte(line[end])) {
        if (!ascii::isAscii(line[end])) {
            if (isAscii && end > begin && beginsOtherScript(line[end])) break;
            isAscii = false;
        }
        ++end;
    }
    if (end - begin > longestDomain) return begin;
    while (end > begin && ascii::isOneOf(line[end - 1], ".-_")) --end;
    return end;
}

/// Whether `domain` may be one in a text: names with a dot, the last of them no number.
bool looksLikeDomain(std::string_view domain) {
    if (domain.starts_with('[')) return domain.size() > 2;
    const std::size_t dot = domain.rfind('.');
    if (dot == npos || domain.front() == '.' || domain.find("..") != npos) return false;
    const std::string_view last = domain.substr(dot + 1);
    return last.size() > 1 && !std::ranges::all_of(last, ascii::isDigit);
}

/// The local part without what labels, lists and quotes put in front of it.
std::size_t skipPunctuation(std::string_view line, std::size_t begin, std::size_t at,
                            bool followsBracket) {
    const std::string_view local = line.substr(begin, at - begin);
    // "rcpt=user"; an address that holds such a character stands in brackets.
    const std::size_t label = local.rfind('=');
    if (label != npos && !followsBracket && local.find('=') == label &&
        local.substr(0, label).find_first_of("+-.") == npos) {
        begin += label + 1;
    }
    while (begin < at && ascii::isOneOf(line[begin], "'*`|.~=#")) ++begin;
    return begin;
}

}  // namespace

std::vector<AddressSpan> findAddresses(std::string_view line) {
    std::vector<AddressSpan> spans;
    std::size_t least = 0;
    const std::size_t firstBracket = line.find('<');
    for (std::size_t at = line.find('@'); at != npos; at = line.find('@', at + 1)) {
        std::size_t begin = beginOfLocalPart(line, at, least);
        std::size_t end = endOfDomain(line, at + 1);
        const bool isBracketed =
            begin > 0 && line[begin - 1] == '<' && end < line.size() && line[end] == '>';
        least = at + 1;
        if (!isBracketed) {
            // Part of a link or of a path.
            if (line.substr(begin, at - begin).find('/') != npos) continue;
            begin = skipPunctuation(line, begin, at, firstBracket < begin);
            if (!looksLikeDomain(line.substr(at + 1, end - at - 1))) continue;
        }
        if (begin == at || at - begin > longestLocalPart || end <= at + 1) continue;
        spans.push_back({begin, end, isBracketed});
        least = end;
    }
    return spans;
}

}  // namespace bouncecheck
