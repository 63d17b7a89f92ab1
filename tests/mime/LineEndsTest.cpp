#include "mime/LineEnds.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <utility>

#include <bouncecheck/Limits.h>

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

class LineEnds : public testing::Test {
protected:
    /// Few bytes, line ends among them.
    std::string sample() {
        const std::string_view alphabets[] = {"\nx", "\r\nx", "\r\n", "\r\nxxxxxxxxxxxxxxxxxxxxx"};
        const std::string_view alphabet = alphabets[random_() % std::size(alphabets)];
        std::string text(random_() % 400, '\0');
        for (char& c : text) c = alphabet[random_() % alphabet.size()];
        return text;
    }

private:
    std::mt19937 random_{20261123};
};

TEST_F(LineEnds, AreCompletedInBlocks) {
    for (std::size_t i = 0; i < 20'000; ++i) {
        const std::string text = sample();
        ASSERT_EQ(copyWithCrLf(text), completedByteByByte(text));
    }
}

TEST_F(LineEnds, AreCompletedInPlaceWhereTheTextIsLong) {
    const std::string line(limits::lineEnds, 'x');
    for (std::size_t i = 0; i < 40; ++i) {
        const std::string text = line + sample();
        std::string roomy = text;
        roomy.reserve(text.size() + 400);
        const char* const storage = roomy.data();
        const std::string completed = withCrLf(std::move(roomy));
        ASSERT_TRUE(completed == completedByteByByte(text));
        ASSERT_EQ(completed.data(), storage);
        ASSERT_TRUE(withCrLf(text) == completed);
    }
}

}  // namespace
}  // namespace bouncecheck
