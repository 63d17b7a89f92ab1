#include <gtest/gtest.h>

#include <random>

#include <bouncecheck/classes/CString.h>
#include "text/ByteBlock.h"
#include "text/NextByte.h"
#include "text/Utf8.h"
#include "text/Wildcard.h"

namespace bouncecheck {
namespace {

std::string generated(std::mt19937& random, std::size_t maxSize, std::string_view alphabet) {
    std::string text(random() % (maxSize + 1), '\0');
    for (char& c : text) c = alphabet[random() % alphabet.size()];
    return text;
}

std::size_t plainFind(std::string_view text, std::string_view needle, std::size_t from) {
    for (; from + needle.size() <= text.size(); ++from)
        if (text.substr(from, needle.size()) == needle) return from;
    return npos;
}

bool plainMatch(std::string_view text, std::string_view pattern) {
    if (pattern.empty()) return text.empty();
    if (pattern[0] == '*' && plainMatch(text, pattern.substr(1))) return true;
    if (text.empty() || (pattern[0] != '*' && pattern[0] != text[0])) return false;
    return plainMatch(text.substr(1), pattern.substr(pattern[0] != '*'));
}

TEST(Search, AgreesWithThePlainSearchAndMatch) {
    std::mt19937 random(20240501);
    for (std::size_t i = 0; i < 60'000; ++i) {
        const std::string_view alphabet = i % 2 == 0 ? "ab" : "aA[{@`\x01\xC3\xE3";
        const std::string text = generated(random, i % 5 == 0 ? 200 : 40, alphabet);
        const std::string line = text.substr(0, 10);
        const std::string needle = generated(random, i % 12, alphabet);
        const std::string glob = generated(random, 8, "aA**"), lower = ascii::lowerCase(text);
        const std::size_t from = random() % 44;
        SCOPED_TRACE(text + " / " + needle + " / " + glob);
        ASSERT_EQ(findBytes(text, needle, from), plainFind(text, needle, from));
        ASSERT_EQ(findBytesNoCase(text, needle, from),
                  plainFind(lower, ascii::lowerCase(needle), from));
        ASSERT_EQ(wildcardMatch(line.c_str(), glob.c_str(), false), plainMatch(line, glob));
        ASSERT_EQ(wildcardMatch(line.c_str(), glob.c_str(), true),
                  plainMatch(lower.substr(0, 10), ascii::lowerCase(glob)));
    }
}

TEST(Search, FindsPairsWithinAndBetweenBlocks) {
    std::mt19937 random(20261122);
    const std::string alphabet = "ab" + std::string(20, 'x');
    for (std::size_t i = 0; i < 20'000; ++i) {
        const std::string text = generated(random, 300, alphabet);
        const std::size_t from = random() % 310;
        SCOPED_TRACE(text);
        ASSERT_EQ(findPair(text, 'a', 'b', from), plainFind(text, "ab", from));
        ASSERT_EQ(findPair(text, 'b', 'b', from), plainFind(text, "bb", from));
    }
}

TEST(Search, ComparesBlocksOfBytesTheSameOnAnyProcessor) {
    std::mt19937 random(20261124);
    for (std::size_t i = 0; i < 20'000; ++i) {
        std::string bytes(maskedBytes, '\0');
        // Neighbours in value, whose bits a carry might reach, or any.
        for (char& c : bytes) c = static_cast<char>(random() % (i % 2 == 0 ? 256 : 3) + '\t');
        const char byte = static_cast<char>(i % 3 == 0 ? random() % 256 : '\n');
        std::uint64_t same = 0;
        unsigned less = 0;
        for (std::size_t at = 0; at < bytes.size(); ++at) {
            same |= std::uint64_t{bytes[at] == byte} << at;
            const bool isLess =
                static_cast<signed char>(bytes[at]) < static_cast<signed char>(byte);
            if (at < ByteBlock::size) less |= unsigned{isLess} << at;
        }
        ASSERT_EQ(maskOf(bytes.data(), byte), same);
        ASSERT_EQ(maskOf<plain::ByteBlock>(bytes.data(), byte), same);
        ASSERT_EQ(ByteBlock(bytes.data()).lessThan(byte), less);
        ASSERT_EQ(plain::ByteBlock(bytes.data()).lessThan(byte), less);
    }
}

TEST(Search, FindsBytesAtPlacesThatGrow) {
    std::mt19937 random(20261123);
    for (std::size_t i = 0; i < 20'000; ++i) {
        const std::string text = generated(random, 700, "a" + std::string(i % 200, 'x'));
        SCOPED_TRACE(text);
        NextByte next(text, 'a');
        for (std::size_t from = random() % 70; from < 800; from += random() % 90) {
            ASSERT_EQ(next.atOrAfter(from), text.find('a', from)) << from;
        }
    }
}

TEST(Search, TellsWhereAsciiEnds) {
    for (std::size_t size = 0; size < 80; ++size) {
        const std::string plain(size, '\v');
        EXPECT_EQ(asciiPrefix(plain), size);
        EXPECT_TRUE(isAsciiLine(plain));
        for (std::size_t at = 0; at < size; ++at) {
            for (const char c : {'\n', '\x80', '\xFF', '\x8A'}) {
                std::string text = plain;
                text[at] = c;
                EXPECT_EQ(asciiPrefix(text), c == '\n' ? size : at);
                EXPECT_FALSE(isAsciiLine(text));
            }
        }
    }
}

TEST(Search, TakesCStrings) {
    const char *s = "a?cab\xE9", *null = nullptr;
    EXPECT_EQ(bxStrChr(s, 'a'), s);
    EXPECT_EQ(bxStrChr(s, 0xE9), s + 5);
    EXPECT_EQ(bxStrChr(s, -23), s + 5);
    EXPECT_EQ(bxStrrChr(s, 'a'), s + 3);
    EXPECT_EQ(bxStrStr(s, "ab\xE9"), s + 3);
    EXPECT_EQ(bxStrStr(s, ""), s);
    EXPECT_EQ(bxStrStr(s, null), s);
    EXPECT_FALSE(bxStrStr(s, "abd"));
    EXPECT_FALSE(bxStrrChr(s, 'x'));
    EXPECT_FALSE(bxStrChr(null, 'a'));
    EXPECT_FALSE(bxStrStr(null, s));
}

// Where the time grows with the square of the size, these do not come to an end.
TEST(Search, FinishesOnHostileTexts) {
    const std::string run(1'000'000, 'a'), half(500'000, 'a'), quarter(250'000, 'a');
    for (const std::string& hostile : {half + 'b', 'b' + half, quarter + 'b' + quarter}) {
        EXPECT_EQ(findBytesNoCase(run, hostile), npos);
        EXPECT_EQ(findBytes(run + 'c' + hostile, hostile), run.size() + 1);
        EXPECT_EQ(bxStrStr(run.c_str(), hostile.c_str()), nullptr);
        EXPECT_FALSE(wildcardMatch(run, '*' + hostile + '*', LetterCase::ignored));
    }
    std::string stars;
    for (int i = 0; i < 100'000; ++i) stars += "*a";
    EXPECT_FALSE(wildcardMatch(run, stars + "b*", LetterCase::exact));
}

}  // namespace
}  // namespace bouncecheck
