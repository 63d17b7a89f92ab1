#include "tool/output/Excerpt.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>

namespace bouncecheck {
namespace {

/// The excerpt with marks in brackets and gaps as "...", '|' behind each line.
std::string shown(const std::string& text, const std::string& phrase, const std::string& address,
                  std::size_t mostBytes = 100) {
    Classified message;
    message.text = ByteStore(text);
    message.match = {"", 0, phrase.c_str(), TextOf::data};
    message.address = address;
    std::string all;
    for (const ExcerptLine& whole : excerptOf(message)) {
        const ExcerptLine line = cutLine(whole, mostBytes);
        std::string marked(line.text);
        for (auto mark = line.marks.rbegin(); mark != line.marks.rend(); ++mark) {
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
        {"user a@x is full", "user a@x", "a@x", "[user ][a@x] is full|"},
        {"mailbox\r\nfull\r\nx", "mailbox\r\nfull", "", "[mailbox]|[full]|x|"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(shown(c.text, c.phrase, c.address), c.expected) << c.text;
    }
}

TEST(ExcerptTest, MarksWhatDecidedAndNothingThatLooksLikeIt) {
    Classified message;
    message.text = ByteStore("To: a@x\r\nit is full\r\nRCPT To: a@x\r\nFull");
    const auto marked = [&] {
        std::string marks;
        for (const ExcerptLine& line : excerptOf(message)) {
            for (const Mark& mark : line.marks) marks += line.text.substr(mark.begin, mark.size);
            marks += '|';
        }
        return marks;
    };
    message.match = {"", 0, "Full", TextOf::data, LetterCase::exact};
    EXPECT_EQ(marked(), "|||Full|");
    message.match = {"", 0, "full", TextOf::subject};
    EXPECT_EQ(marked(), "||||");
    message.address = "a@x";
    message.marker = {"BounceDataMarkers", 0, "RCPT To:", TextOf::data, LetterCase::exact};
    EXPECT_EQ(marked(), "||a@x||");
}

TEST(ExcerptTest, MarksTheEvidenceOfEachRecipient) {
    Classified message;
    message.text = ByteStore(
        "To ann@x.example: no user.\r\n0\r\n1\r\n2\r\n3\r\n4\r\n5\r\n"
        "To nn@x.example.\r\nSays: no user");
    message.match = {"", 0, "no user", TextOf::data};
    message.address = "Nn@x.example";
    message.recipients = {{.address = "nn@x.example", .quote = "no user"},
                          {.address = "ann@x.example", .quote = "No user"},
                          {.address = "none@x.example", .finalAddress = "ann@x.example"}};
    message.recipients.resize(100, {.address = "nn@x.example", .quote = "Says"});
    const auto marks = [&] {
        std::map<std::pair<std::size_t, std::string>, Marked> found;
        std::size_t line = 0;
        for (const ExcerptLine& shown : excerptOf(message)) {
            for (const Mark& mark : shown.marks) {
                found[{line, std::string(shown.text.substr(mark.begin, mark.size))}] = mark.what;
            }
            ++line;
        }
        return found;
    };
    const Marked second = markedRecipient(1) | markedRecipient(2);
    // The classifier takes the first of what it finds; a recipient's words stand behind it.
    auto found = marks();
    EXPECT_EQ((found[{0, "nn@x.example"}] & (second | markedAddress)), second | markedAddress);
    EXPECT_EQ((found[{0, "a"}]), second);
    EXPECT_EQ((found[{0, "no user"}]), markedPhrase | markedQuote(0));
    message.address = "b@x.example";
    found = marks();
    EXPECT_EQ((found[{0, "ann@x.example"}]), second);
    EXPECT_EQ((found[{6, "nn@x.example"}] & (markedRecipient(0) | second)), markedRecipient(0));
    EXPECT_EQ((found[{7, "no user"}]), markedQuote(0));
    EXPECT_EQ((found[{7, "Says"}]), 0xAAAAAA00U);  // of the fourth and those behind it
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
