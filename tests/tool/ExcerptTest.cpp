#include "tool/output/Excerpt.h"

#include <gtest/gtest.h>

#include <string>

namespace bouncecheck {
namespace {

/// The excerpt with marks in brackets and gaps as "...", '|' behind each line.
std::string shown(const std::string& text, const std::string& phrase, const std::string& address,
                  std::size_t mostBytes = 100) {
    Classified message;
    message.data = text;
    message.address = address;
    std::string all;
    for (const ExcerptLine& whole : excerptOf(message, phrase)) {
        const ExcerptLine line = cutLine(whole, mostBytes);
        std::string marked(line.text);
        for (auto mark = line.marks.rbegin(); mark != line.marks.rend(); ++mark) {
            if (mark->size == 0) continue;
            marked.insert(mark->begin + mark->size, "]").insert(mark->begin, "[");
        }
        all += (line.isGap ? "..." : marked) + "|";
    }
    return all;
}

TEST(ExcerptTest, ShowsWhereThingsStand) {
    const std::string digits = "0\r\n1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\nend";
    const struct {
        std::string text, phrase, address, expected;
    } cases[] = {
        {"", "x", "a@x", ""},
        {"\n", "x", "", "|"},
        {digits, "", "", "0|1|2|3|4|5|6|7|8|9|end|"},
        {digits + digits, "none", "", "0|1|2|3|4|5|6|7|8|9|end0|1|...|"},
        {digits, "4", "", "...|2|3|[4]|5|6|...|"},
        {digits, "9", "1", "0|[1]|2|3|...|7|8|[9]|end|"},
        {digits, "3", "6", "...|1|2|[3]|4|5|[6]|7|8|...|"},
        {digits, "END", "0", "[0]|1|2|...|8|9|[end]|"},
        {"an A@x b full", "full", "a@X", "an [A@x] b [full]|"},
        {"user a@x is full", "user a@x", "a@x", "[user a@x] is full|"},
        {"mailbox\r\nfull\r\nx", "mailbox\r\nfull", "", "[mailbox]|[full]|x|"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(shown(c.text, c.phrase, c.address), c.expected) << c.text;
    }
}

TEST(ExcerptTest, CutsLongLines) {
    const std::string dashes(30, '-');
    EXPECT_EQ(shown("full" + dashes, "full", "", 10), "[full]------|");
    EXPECT_EQ(shown(dashes + "full", "full", "", 30), std::string(20, '-') + "[full]|");
    // The second mark may be cut, or out of sight.
    EXPECT_EQ(shown("full a@x" + dashes, "full", "a@x", 7), "[full] [a@]|");
    EXPECT_EQ(shown("full" + dashes + "a@x", "full", "a@x", 7), "[full]---|");
    // No character is torn; of what is no UTF-8 nothing is lost.
    EXPECT_EQ(shown("\xC3\xA4\xC3\xA4\xC3\xA4", "", "", 3), "\xC3\xA4|");
    EXPECT_EQ(shown(std::string(9, '\x80'), "", "", 3), "\x80\x80\x80|");
}

TEST(ExcerptTest, IsLinear) {
    const std::string lines(4 << 20, '\n');
    EXPECT_EQ(shown(lines + "x", "x", ""), "...|||[x]|");
}

}  // namespace
}  // namespace bouncecheck
