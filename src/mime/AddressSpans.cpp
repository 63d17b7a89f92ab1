#include "mime/AddressSpans.h"

#include <algorithm>
#include <array>

#include "text/Ascii.h"
#include "text/Controls.h"
#include "text/Search.h"
#include "text/Utf8.h"

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

/// How many bytes the blank or punctuation mark outside ASCII has that `text` begins with, such as
/// U+00A0, a quotation mark or an ellipsis; 0 where it begins with none.
constexpr std::size_t markLength(std::string_view text) noexcept {
    if (text.size() < 2) return 0;
    const auto first = static_cast<unsigned char>(text[0]);
    const auto second = static_cast<unsigned char>(text[1]);
    // U+0080 to U+00BF, but for the letters among them.
    if (first == 0xC2) return second == 0xAA || second == 0xB5 || second == 0xBA ? 0 : 2;
    if (text.size() < 3 || !continuesCharacter(text[2])) return 0;
    const auto third = static_cast<unsigned char>(text[2]);
    // U+2000 to U+207F, but for the joiners that words of some scripts contain.
    const bool isGeneral =
        first == 0xE2 && (second == 0x80 || second == 0x81) && third != 0x8C && third != 0x8D;
    // U+3000 to U+303F, but for the characters that stand in words.
    const bool isIdeographic = first == 0xE3 && second == 0x80 && (third < 0x85 || third > 0x87);
    // U+FF01 to U+FF20 without the digits, and the mark that texts begin with.
    const bool isWide =
        first == 0xEF && ((second == 0xBC && (third < 0x90 || third > 0x99) && third <= 0xA0) ||
                          (second == 0xBB && third == 0xBF));
    return isGeneral || isIdeographic || isWide ? 3 : 0;
}

/// Where the local part before `at`, which does not begin before `least`, begins.
std::size_t beginOfLocalPart(std::string_view line, std::size_t at, std::size_t least) {
    const std::size_t farthest = at - std::min(at, longestLocalPart + 1);
    if (at > farthest + 1 && line[at - 1] == '"') {
        // The quote that opens it, past those that stand in it behind a backslash, and past
        // what looks like an address in it.
        for (std::size_t quote = at - 1; quote-- > farthest;) {
            if (line[quote] == '"' && (quote == 0 || line[quote - 1] != '\\')) return quote;
        }
        return at;
    }
    least = std::max(least, farthest);
    std::size_t begin = at;
    while (begin > least && isAtomByte(line[begin - 1])) --begin;
    std::size_t word = at;
    while (word > begin && ascii::isAscii(line[word - 1])) --word;
    for (std::size_t i = begin; i < word; ++i) {
        if (const std::size_t length = markLength(line.substr(i)); length != 0) begin = i + length;
    }
    // Letters of another script in front of an ASCII word are not part of it.
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
            if (markLength(line.substr(end)) != 0) break;
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

/// Where the local part begins, behind what labels, lists and quotes put in front of it.
std::size_t skipPunctuation(std::string_view line, std::size_t begin, std::size_t at,
                            bool followsBracket) {
    const std::string_view local = line.substr(begin, at - begin);
    // "rcpt=user"; an address that holds such a character stands in brackets. What is too long is
    // no label.
    const std::size_t label = local.rfind('=');
    if (label != npos && !followsBracket && local.size() <= longestLocalPart &&
        local.find('=') == label && local.substr(0, label).find_first_of("+-.") == npos) {
        begin += label + 1;
    }
    // "550-'user"
    constexpr std::size_t code = 3;
    const std::string_view rest = line.substr(begin, at - begin);
    if (rest.size() > code + 2 && rest[code] == '-' && ascii::isOneOf(rest[code + 1], "'`") &&
        std::ranges::all_of(rest.substr(0, code), ascii::isDigit)) {
        begin += code + 1;
    }
    while (begin < at && ascii::isOneOf(line[begin], "'*`|.~=#{")) ++begin;
    return begin;
}

/// Whether a control character stands in what lies between, or beside it: then it is part of
/// something else, however it looks. White space may stand beside it.
bool touchesControl(std::string_view line, std::size_t begin, std::size_t end) {
    if (begin > 0) --begin;
    while (begin > 0 && continuesCharacter(line[begin])) --begin;
    if (end < line.size()) ++end;
    while (end < line.size() && continuesCharacter(line[end])) ++end;
    std::string_view part = line.substr(begin, end - begin);
    if (!part.empty() && ascii::isSpace(part.front())) part.remove_prefix(1);
    if (!part.empty() && ascii::isSpace(part.back())) part.remove_suffix(1);
    return findControl(part).at != npos;
}

/// Whether what ends at `end` is only the last part of what stands in brackets:
/// "<john smith@example.org>". It is whole behind its kind ("<mailto:ann@example.org>") or a route
/// (RFC 5321, section 4.1.2).
bool isTailOfBracketed(std::string_view line, std::size_t begin, std::size_t end) {
    if (begin == 0 || end >= line.size() || line[end] != '>') return false;
    const std::size_t first = begin - std::min(begin, longestLocalPart);
    const std::string_view before = line.substr(first, begin - first);
    const std::size_t bracket = before.find_last_of("<>");
    if (bracket == npos || before[bracket] == '>') return false;
    const std::string_view kind = ascii::trim(before.substr(bracket + 1));
    static constexpr auto kinds =
        std::to_array<std::string_view>({"mailto:", "smtp:", "rfc822;", "rfc822:", "utf-8;"});
    if (kind.empty() || kind.starts_with('@')) return false;
    return std::ranges::none_of(
        kinds, [&](std::string_view one) { return ascii::equalsNoCase(kind, one); });
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
        // Of "a@b@c" no part is an address.
        const bool followsAt = begin > 0 && line[begin - 1] == '@';
        if (followsAt || (end < line.size() && line[end] == '@')) continue;
        if (touchesControl(line, begin, end)) continue;
        if (!isBracketed && isTailOfBracketed(line, begin, end)) continue;
        // What seemed to be one within a quoted local part.
        while (!spans.empty() && spans.back().end > begin) spans.pop_back();
        spans.push_back({begin, end, isBracketed});
        least = end;
    }
    return spans;
}

}  // namespace bouncecheck
