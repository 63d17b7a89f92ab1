#include "text/Utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#include "text/Ascii.h"

namespace bouncecheck {
namespace {

constexpr std::size_t wordSize = sizeof(std::uint64_t);
constexpr std::uint64_t highBits = 0x8080808080808080u;

std::uint64_t wordAt(std::string_view text, std::size_t at) noexcept {
    std::uint64_t word = 0;
    std::memcpy(&word, text.data() + at, wordSize);
    return word;
}

/// What stands at the start of a text: a whole character, or the longest
/// stretch that could have begun one.
struct Sequence {
    std::size_t length;
    bool wellFormed;
};

Sequence sequenceAt(std::string_view text) noexcept {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80) return {1, true};

    std::size_t length = 0;
    // The second byte alone keeps out overlong forms, surrogates and too large
    // values (the table of RFC 3629, section 4).
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        if (lead == 0xE0) low = 0xA0;
        if (lead == 0xED) high = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        if (lead == 0xF0) low = 0x90;
        if (lead == 0xF4) high = 0x8F;
    } else {
        return {1, false};
    }
    for (std::size_t i = 1; i < length; ++i) {
        if (i >= text.size() || byte(i) < low || byte(i) > high) return {i, false};
        low = 0x80;
        high = 0xBF;
    }
    return {length, true};
}

/// Calls `take` with each stretch of `text` and what it is in well-formed UTF-8.
template <class Take>
void forEachStretch(std::string_view text, Take take) {
    while (!text.empty()) {
        const std::size_t plain = asciiPrefix(text);
        take(text.substr(0, plain), text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty()) return;
        const Sequence sequence = sequenceAt(text);
        const std::string_view stretch = text.substr(0, sequence.length);
        take(stretch, sequence.wellFormed ? stretch : replacementCharacter);
        text.remove_prefix(sequence.length);
    }
}

}  // namespace

std::string_view wholeCharacters(std::string_view text, std::size_t most) noexcept {
    if (text.size() <= most) return text;
    constexpr std::size_t longestTail = 3;  // of a character, behind its first byte
    for (std::size_t back = 0; back <= std::min(most, longestTail); ++back) {
        if (!continuesCharacter(text[most - back])) return text.substr(0, most - back);
    }
    return text.substr(0, most);
}

std::size_t asciiPrefix(std::string_view text) noexcept {
    std::size_t length = 0;
    std::array<std::uint64_t, 4> words{};
    for (; length + sizeof words <= text.size(); length += sizeof words) {
        std::memcpy(words.data(), text.data() + length, sizeof words);
        if (((words[0] | words[1] | words[2] | words[3]) & highBits) != 0) break;
    }
    for (; length + wordSize <= text.size(); length += wordSize) {
        if ((wordAt(text, length) & highBits) != 0) break;
    }
    // What is left of a text in ASCII is in its last word.
    if (text.size() >= wordSize && length + wordSize > text.size() &&
        (wordAt(text, text.size() - wordSize) & highBits) == 0) {
        return text.size();
    }
    while (length < text.size() && ascii::isAscii(text[length])) ++length;
    return length;
}

bool isAsciiLine(std::string_view text) noexcept {
    if (text.size() < wordSize) {
        return std::ranges::all_of(text, [](char c) { return ascii::isAscii(c) && c != '\n'; });
    }
    constexpr std::uint64_t lowBits = 0x0101010101010101u;
    const auto unlike = [&](std::size_t at) {
        const std::uint64_t word = wordAt(text, at);
        // A byte that is 0 here is an LF; of bytes in ASCII no other takes a high bit from this.
        const std::uint64_t distance = word ^ (lowBits * '\n');
        return (word | (distance - lowBits)) & highBits;
    };
    std::uint64_t found = unlike(text.size() - wordSize);
    for (std::size_t at = 0; at + wordSize < text.size(); at += wordSize) found |= unlike(at);
    return found == 0;
}

bool isUtf8(std::string_view text) noexcept {
    for (;;) {
        text.remove_prefix(asciiPrefix(text));
        if (text.empty()) return true;
        // Letters of most scripts stand side by side.
        do {
            const Sequence sequence = sequenceAt(text);
            if (!sequence.wellFormed) return false;
            text.remove_prefix(sequence.length);
        } while (!text.empty() && !ascii::isAscii(text.front()));
    }
}

bool isOneCharacter(std::string_view text) noexcept {
    if (text.empty()) return false;
    const Sequence sequence = sequenceAt(text);
    return sequence.wellFormed && sequence.length == text.size();
}

std::uint32_t codePointOf(std::string_view character) noexcept {
    const auto lead = static_cast<unsigned char>(character.front());
    if (character.size() == 1) return lead;
    std::uint32_t code = lead & (0xFFu >> (character.size() + 1));
    for (const char c : character.substr(1)) {
        code = code << 6 | (static_cast<unsigned char>(c) & 0x3Fu);
    }
    return code;
}

void appendUtf8(std::string& out, std::uint32_t codePoint) {
    const auto put = [&](std::uint32_t byte) { out.push_back(static_cast<char>(byte)); };
    const auto putTail = [&](unsigned shift) { put(0x80 | ((codePoint >> shift) & 0x3F)); };
    if (codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF)) {
        out += replacementCharacter;
    } else if (codePoint < 0x80) {
        put(codePoint);
    } else if (codePoint < 0x800) {
        put(0xC0 | (codePoint >> 6));
        putTail(0);
    } else if (codePoint < 0x10000) {
        put(0xE0 | (codePoint >> 12));
        putTail(6);
        putTail(0);
    } else {
        put(0xF0 | (codePoint >> 18));
        putTail(12);
        putTail(6);
        putTail(0);
    }
}

void appendWellFormed(std::string& out, std::string_view text, std::size_t mostGrowth) {
    std::size_t length = 0;
    std::size_t size = out.size();
    std::size_t growth = 0;
    forEachStretch(text, [&](std::string_view stretch, std::string_view wellFormed) {
        // No replacement is shorter than what it stands for, so this is never undone.
        growth += wellFormed.size() - stretch.size();
        if (growth > mostGrowth) return;
        length += stretch.size();
        size += wellFormed.size();
    });
    out.reserve(size);
    forEachStretch(text.substr(0, length),
                   [&](std::string_view, std::string_view wellFormed) { out.append(wellFormed); });
}

}  // namespace bouncecheck
