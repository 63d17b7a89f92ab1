#include "reasons/ReplyText.h"

#include <algorithm>

#include "reasons/CodeShapes.h"
#include "text/Ascii.h"
#include "text/ByteSet.h"
#include "text/NextByte.h"
#include "text/Search.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

/// One byte as it is searched, and the bytes of the text that it is for.
struct PlainByte {
    char byte = ' ';
    std::size_t length = 1;
};

/// The plain letters of U+00C0 to U+00FF and of U+0100 to U+017F; "." for what has none. Replies
/// are often in ASCII, whatever their language.
constexpr std::string_view plainLatin =
    "aaaaaa.ceeeeiiii.nooooo.ouuuuy..aaaaaa.ceeeeiiii.nooooo.ouuuuy.y"
    "aaaaaaccccccccddddeeeeeeeeeegggggggghhhhiiiiiiiiii..jjkkkllllllllllnnnnnnnnnoooooo.."
    "rrrrrrssssssssttttttuuuuuuuuuuuuwwyyyzzzzzzs";
static_assert(plainLatin.size() == 0x180 - 0xC0);

/// The plain letter of the character at the start of `text`; "." for none.
char plainLatinAt(std::string_view text) noexcept {
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0xC3 || first > 0xC5 || text.size() < 2 || !continuesCharacter(text[1])) return '.';
    const auto second = static_cast<unsigned char>(text[1]);
    return plainLatin[(first - 0xC3u) * 0x40 + (second - 0x80u)];
}

/// The second byte, at `at`, of a letter of two bytes, as that of its small form.
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
    if (const char letter = plainLatinAt(rest); letter != '.') return {letter, 2};
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
constexpr ByteSet atomBytes = bytesWhere(
    [](char c) { return ascii::isAlnum(c) || ascii::isOneOf(c, "!#$%&'*+-/=?^_`{|}~."); });
constexpr std::string_view quoteMarks = "<>|*";
/// The first bytes of characters that may stand as others in the plain form, and those of them
/// whose second byte does so.
constexpr std::string_view changedStarts = "\xC2\xC3\xC4\xC5\xD0\xE2\xE3";
constexpr std::string_view pairStarts = "\xC3\xD0";
/// What stands in the plain form as it does in the text, unless it begins a word, goes on with a
/// pair, or is part of an address.
constexpr ByteSet plainBytes =
    bytesWhere([](char c) { return !ascii::isSpace(c) && !ascii::isOneOf(c, changedStarts); });
/// What does so at the start of a word, too: it begins no code and quotes nothing.
constexpr ByteSet plainStarts = bytesWhere([](char c) {
    return plainBytes.contains(c) && !ascii::isOneOf(c, "245") && !ascii::isOneOf(c, quoteMarks);
});

std::size_t atomEnd(std::string_view text, std::size_t at) noexcept {
    return at + lengthOf(atomBytes, text.substr(at));
}

/// The end of the stretch that begins at `at`, before `end`, with a plain byte, and goes on with
/// such words, one blank between them.
std::size_t plainEnd(std::string_view text, std::size_t at, std::size_t end) noexcept {
    for (;;) {
        at += lengthOf(plainBytes, text.substr(at, end - at));
        if (end - at < 2 || text[at] != ' ' || !plainStarts.contains(text[at + 1])) return at;
        ++at;
    }
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

/// Where an address may begin, for positions that only grow.
class NextAddress {
public:
    explicit NextAddress(std::string_view text) noexcept : text_(text), signs_(text, '@') {}

    /// The first place at or after `at` where one may begin; the size of the text without one.
    std::size_t atOrAfter(std::size_t at) noexcept {
        const std::size_t sign = signs_.atOrAfter(at);
        if (sign == npos) return text_.size();
        if (sign != sign_) {
            sign_ = sign;
            begin_ = sign;
            while (begin_ > at && atomBytes.contains(text_[begin_ - 1])) --begin_;
            if (begin_ > at && text_[begin_ - 1] == '<') --begin_;
        }
        return std::max(begin_, at);
    }

private:
    std::string_view text_;
    NextByte signs_;
    std::size_t sign_ = npos;
    std::size_t begin_ = 0;
};

/// Calls, for the plain form of `text` from its start on and as long as they return true,
/// `sink.take(at, length)` for bytes of the text that stand in it as they are, and
/// `sink.replace(byte, at, length)` for a byte that stands for some.
template <class Sink>
void walk(std::string_view text, Sink& sink) {
    NextAddress addresses(text);
    bool beginsLine = true;
    bool beginsWord = true;
    bool wasBlank = false;
    /// Those since the last word.
    std::size_t lineEnds = 0;
    std::size_t wordEnd = 0;
    const auto endWord = [&] {
        beginsLine = beginsWord = wasBlank = false;
        lineEnds = 0;
    };
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t address = addresses.atOrAfter(at);
        const bool endsPair = at > 0 && ascii::isOneOf(text[at - 1], pairStarts);
        if (at < address && !endsPair &&
            (beginsWord ? plainStarts : plainBytes).contains(text[at])) {
            const std::size_t length = plainEnd(text, at, address) - at;
            if (!sink.take(at, length)) return;
            at += length;
            endWord();
            continue;
        }
        if (beginsWord) {
            if (const std::size_t codes = codesLength(text, at, beginsLine); codes != 0) {
                at += codes;
                beginsLine = false;
                continue;
            }
        }
        if (at >= address && at >= wordEnd) {
            const Word word = wordAt(text, at);
            wordEnd = word.end;
            if (word.isAddress) {
                if (!sink.replace('@', at, word.end - at)) return;
                at = word.end;
                endWord();
                continue;
            }
        }
        const char c = text[at];
        if (c == '\n' || (c == '\r' && text.substr(at + 1, 1) != "\n")) {
            if (++lineEnds == 2 && !sink.replace('\n', at, 1)) return;
        }
        if (c == '\n' || c == '\r') beginsLine = true;
        const bool isQuote = beginsLine && ascii::isOneOf(c, quoteMarks);
        const PlainByte plain = isQuote ? PlainByte{} : plainByteAt(text, at);
        beginsWord = plain.byte == ' ';
        if (!beginsWord) {
            beginsLine = false;
            lineEnds = 0;
        }
        if (!(beginsWord && wasBlank) && !sink.replace(plain.byte, at, plain.length)) return;
        wasBlank = beginsWord;
        at += plain.length;
    }
}

/// Collects the plain form.
struct Writer {
    std::string_view text;
    std::string& plain;

    bool take(std::size_t at, std::size_t length) {
        plain.append(text, at, length);
        return true;
    }
    bool replace(char byte, std::size_t, std::size_t) {
        plain += byte;
        return true;
    }
};

/// Finds where a part of the plain form stands in the text.
struct Locator {
    TextPart part;
    TextPart found{};
    std::size_t index = 0;

    bool take(std::size_t at, std::size_t length) {
        const std::size_t last = part.at + part.length;
        if (part.at >= index && part.at < index + length) found.at = at + (part.at - index);
        if (index + length < last) {
            index += length;
            return true;
        }
        found.length = at + (last - index) - found.at;
        return false;
    }
    bool replace(char, std::size_t at, std::size_t length) {
        if (index == part.at) found.at = at;
        if (++index < part.at + part.length) return true;
        found.length = at + length - found.at;
        return false;
    }
};

}  // namespace

ReplyText::ReplyText(std::string_view text) : text_(text) {
    plain_.reserve(text.size());
    Writer writer{text_, plain_};
    walk(text_, writer);
}

TextPart ReplyText::inText(TextPart part) const {
    Locator locator{part};
    walk(text_, locator);
    return locator.found;
}

}  // namespace bouncecheck
