#include "tool/output/TerminalText.h"

#include <gtest/gtest.h>

#include <string>

namespace bouncecheck {
namespace {

TEST(TerminalText, CountsColumns) {
    const std::pair<const char*, std::size_t> cases[] = {
        {"", 0},
        {"abc", 3},
        {"\xC3\xBC", 1},
        {"e\xCC\x81", 1},
        {"\xE4\xBD\xA0\xE5\xA5\xBD", 4},
        {"\xF0\x9F\x98\x80", 2},
        {"\xEF\xBF\xBD", 1},
        {"\xED\x9E\xA3\xED\x9E\xA4", 3},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(columns(text), expected) << text;
}

TEST(TerminalText, CutsToFit) {
    EXPECT_EQ(fitted("abc", 3), "abc");
    EXPECT_EQ(fitted("abcd", 3), "ab\xE2\x80\xA6");
    EXPECT_EQ(fitted("abcd", 3, Cut::front),
              "\xE2\x80\xA6"
              "cd");
    EXPECT_EQ(fitted("abcd", 1), "\xE2\x80\xA6");
    EXPECT_EQ(fitted("abcd", 1, Cut::front), "\xE2\x80\xA6");
    EXPECT_EQ(fitted("abcd", 0), "");
    const std::string wide = "\xE4\xBD\xA0\xE5\xA5\xBD\xE4\xBD\xA0";
    for (std::size_t width = 0; width <= 6; ++width) {
        EXPECT_LE(columns(fitted(wide, width)), width);
        EXPECT_LE(columns(fitted(wide, width, Cut::front)), width);
    }
}

TEST(TerminalText, IsPrintable) { EXPECT_EQ(printable("a\x1b\xff\n"), "a\\x1B\xEF\xBF\xBD\\n"); }

}  // namespace
}  // namespace bouncecheck
