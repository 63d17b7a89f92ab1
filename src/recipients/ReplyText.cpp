#include "recipients/ReplyText.h"

#include "recipients/CodeShapes.h"
#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

/// One byte as it is searched, and the bytes of the text that it is for.
struct PlainByte {
    char byte = ' ';
    std::size_t length = 1;
};

/// The letters of two bytes whose small form has two as well.
PlainByte letterAt(std::string_view text, std::size_t at) noexcept {
    const auto first = static_cast<unsigned char>(text[at - 1]);
    const auto second = static_cast<unsigned char>(text[at]);
    const bool isLatin = first == 0xC3 && second >= 0x80 && second <= 0x9E && second != 0x97;
    const bool isEarlyCyrillic = first == 0xD0 && second >= 0x90 && second <= 0x9F;
    const bool isLateCyrillic = first == 0xD0 && second >= 0xA0 && second <= 0xAF;
    if (isLatin || isEarlyCyrillic) return {static_cast<char>(second + 0x20)};
    if (isLateCyrillic) return {static_cast<char>(second - 0x20)};
    return {text[at]};
}

PlainByte plainByteAt(std::string_view text, std::size_t at) noexcept {
    const char c = text[at];
    if (ascii::isSpace(c)) return {' '};
    if (ascii::isAscii(c)) return {c};
    const std::string_view rest = text.substr(at, 3);
    if (rest == "\xE2\x80\x99" || rest == "\xE2\x80\x98") return {'\'', 3};
    if (rest == "\xE3\x80\x80") return {' ', 3};
    if (rest.starts_with("\xC2\xA0")) return {' ', 2};
    if (rest.size() > 1 && c == '\xD0' && rest[1] >= '\xA0' && rest[1] <= '\xAF') return {'\xD1'};
    return at > 0 ? letterAt(text, at) : PlainByte{c};
}

/// How many bytes of codes stand at `at`, where a word begins.
std::size_t codesLength(std::string_view text, std::size_t at, bool beginsLine) noexcept {
    const std::size_t code = replyCodeLength(text, at);
    if (code == 0 || at + code == text.size()) return 0;
    const char next = text[at + code];
    const std::size_t status = statusLength(text, at + code + 1);
    if (next != '-' && !(ascii::isBlank(next) && (status != 0 || beginsLine))) return 0;
    return code + 1 + status;
}

/// ASCII only: Chinese and Japanese put no blanks around an address.
constexpr bool isAtomByte(char c) noexcept {
    return ascii::isAlnum(c) || ascii::isOneOf(c, "!#$%&'*+-/=?^_`{|}~.");
}

std::size_t atomEnd(std::string_view text, std::size_t at) noexcept {
    while (at < text.size() && isAtomByte(text[at])) ++at;
    return at;
}

/// What begins at `at`, where no atom goes on: an address, in brackets or bare, or else the
/// atom up to `end`.
struct Word {
    std::size_t end;
    bool isAddress = false;
};

Word wordAt(std::string_view text, std::size_t at) noexcept {
    const bool isBracketed = text[at] == '<';
    const std::size_t begin = at + (isBracketed ? 1 : 0);
    const std::size_t sign = atomEnd(text, begin);
    if (sign == begin || sign == text.size() || text[sign] != '@') return {sign};
    std::size_t end = atomEnd(text, sign + 1);
    if (end == sign + 1) return {sign};
    while (text[end - 1] == '.') --end;
    if (isBracketed && end < text.size() && text[end] == '>') ++end;
    return {end, true};
}

/// Calls `take(byte, at, length)` for each byte of the plain form of `text`, with the bytes
/// of the text that it stands for, as long as that returns true.
template <class Take>
void walk(std::string_view text, Take take) {
    bool beginsLine = true;
    bool beginsWord = true;
    bool wasBlank = false;
    std::size_t wordEnd = 0;
    for (std::size_t at = 0; at < text.size();) {
        if (beginsWord) {
            if (const std::size_t codes = codesLength(text, at, beginsLine); codes != 0) {
                at += codes;
                beginsLine = false;
                continue;
            }
        }
        if (at >= wordEnd) {
            const Word word = wordAt(text, at);
            wordEnd = word.end;
            if (word.isAddress) {
                if (!take('@', at, word.end - at)) return;
                at = word.end;
                beginsLine = beginsWord = wasBlank = false;
                continue;
            }
        }
        const char c = text[at];
        if (c == '\n' || c == '\r') beginsLine = true;
        const bool isQuote = beginsLine && ascii::isOneOf(c, "<>|*");
        const PlainByte plain = isQuote ? PlainByte{} : plainByteAt(text, at);
        beginsWord = plain.byte == ' ';
        if (!beginsWord) beginsLine = false;
        if (!(beginsWord && wasBlank) && !take(plain.byte, at, plain.length)) return;
        wasBlank = beginsWord;
        at += plain.length;
    }
}

}  // namespace

ReplyText::ReplyText(std::string_view text) : text_(text) {
    plain_.reserve(text.size());
    walk(text, [&](char byte, std::size_t, std::size_t) {
        plain_ += byte;
        return true;
    });
}

TextPart ReplyText::inText(TextPart part) const {
    // Most parts stand in the text as they are.
    const std::string_view plain = view().substr(part.at, part.length);
    if (const std::size_t at = findBytesNoCase(text_, plain); at != npos) return {at, plain.size()};
    TextPart found;
    std::size_t index = 0;
    walk(text_, [&](char, std::size_t at, std::size_t length) {
        if (index == part.at) found.at = at;
        if (++index < part.at + part.length) return true;
        found.length = at + length - found.at;
        return false;
    });
    return found;
}

}  // namespace bouncecheck
