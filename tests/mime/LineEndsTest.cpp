#include "mime/LineEnds.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <utility>

namespace bouncecheck {
namespace {

std::string completedByteByByte(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isPair = text.substr(i, 2) == crLf;
        const bool isEnd = text[i] == '\r' || text[i] == '\n';
        isEnd ? out += crLf : out += text[i];
        if (isPair) ++i;
    }
    return out;
}

TEST(LineEnds, AreCompletedTheSameInBlocksAndInPlace) {
    std::mt19937 random(20261123);
    const std::string_view alphabets[] = {"\nx", "\r\nx", "\r\n", "\r\nxxxxxxxxxxxxxxxxxxxxx"};
    for (std::size_t i = 0; i < 20'000; ++i) {
        const std::string_view alphabet = alphabets[i % std::size(alphabets)];
        std::string text(random() % 400, '\0');
        for (char& c : text) c = alphabet[random() % alphabet.size()];
        const std::string expected = completedByteByByte(text);
        ASSERT_EQ(copyWithCrLf(text), expected);
        std::string roomy = text;
        roomy.reserve(2 * text.size());
        ASSERT_EQ(withCrLf(std::move(roomy)), expected);
    }
}

}  // namespace
}  // namespace bouncecheck
