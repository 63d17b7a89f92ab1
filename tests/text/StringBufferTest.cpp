#include <bouncecheck/classes/StringBuffer.h>

#include <gtest/gtest.h>

#include <bouncecheck/classes/DataBuffer.h>
#include <bouncecheck/classes/ExtPtrArray.h>
#include <bouncecheck/classes/XString.h>

namespace bouncecheck {
namespace {

using namespace std::string_view_literals;

constexpr const char* null = nullptr;

/// Splits the last element of an array into that array and makes `sb` the fields.
void splitFields(StringBuffer& sb, bool exceptQuoted, bool trimEach) {
    ExtPtrArraySb fields;
    fields.appendSb(sb.view());
    fields.elementAt(0)->split(fields, ' ', exceptQuoted, trimEach);
    sb.clear();
    for (int i = 1; fields.elementAt(i); ++i) sb.append(*fields.elementAt(i)), sb.append("|");
    fields.removeAllSbs();
    EXPECT_EQ(fields.getSize(), 0);
    EXPECT_FALSE(fields.elementAt(0));
    EXPECT_FALSE(fields.elementAt(-1));
}

TEST(StringBuffer, ChangesItsText) {
    struct Case {
        std::string_view before;
        void (*change)(StringBuffer&);
        std::string_view after;
    };
    const Case cases[] = {
        {"a", [](auto& s) { s.append(null), s.appendN("c\0d", 3), s.appendN(null, 0); }, "ac\0d"sv},
        {"a", [](auto& s) { s.setString(null), s.append(DataBuffer("\xFF")); }, "\xFF"},
        {"Ab;ab;", [](auto& s) { s.replaceFirstOccurance("ab;", null, false); }, "Ab;"},
        {"a[AT]b[DOT]c[AT]", [](auto& s) { s.replaceAllWithUchar("[AT]", '@'); }, "a@b[DOT]c@"},
        {"\r\n a \t b\0\v\f"sv, [](auto& s) { s.trim2(); }, "a \t b\0"sv},
        {"a <MailTo:a>", [](auto& s) { s.chopAtSubstr("<mAILTO", true); }, "a "},
        {"a\0-a"sv, [](auto& s) { s.removeCharOccurances('a'), s.chopAtFirstChar('-'); }, "\0"sv},
        {"abc", [](auto& s) { s.shorten(4), s.shorten(1), s.shorten(~0U); }, ""},
        {"\"a b\" c", [](auto& s) { splitFields(s, true, false); }, "\"a b\"|c|"},
        {"\ta\n b\0"sv, [](auto& s) { splitFields(s, false, true); }, "a|b\0|"sv},
        // Arguments that lie in the buffer itself, which must grow for some.
        {"01234567890abc e", [](auto& s) { s.append(s.pCharAt(8)); }, "01234567890abc e890abc e"},
        {"01234567890abc e", [](auto& s) { s.append(s); }, "01234567890abc e01234567890abc e"},
        {"0123456789abc de", [](auto& s) { s.captureNonWS(s.pCharAt(12)); }, "0123456789abc dec"},
        {"abc", [](auto& s) { s.setString(s.getString() + 1), s.setString(s); }, "bc"},
        {"b-ab-ab", [](auto& s) { s.replaceAllOccurances(s.pCharAt(5), s.pCharAt(6)); }, "b-b-b"},
        {"A-a", [](auto& s) { s.replaceFirstOccurance(s.pCharAt(2), s.pCharAt(1), true); }, "-a-a"},
    };
    for (const Case& c : cases) {
        StringBuffer own, shared, other, stretch;
        own.append(c.before);
        other.append(c.before);
        other.handOut(shared);
        const ByteStore longer = ByteStore::shared("a" + std::string(c.before) + "b");
        stretch.append(DataBuffer(longer.stretch(longer.view().substr(1, c.before.size()))));
        for (StringBuffer* sb : {&own, &shared, &stretch}) {
            c.change(*sb);
            EXPECT_EQ(sb->view(), c.after) << "case " << &c - cases << " on " << c.before;
            EXPECT_EQ(sb->getString()[sb->getSize()], '\0');
        }
        EXPECT_EQ(other.view(), c.before);
    }
}

TEST(StringBuffer, AnswersAboutItsText) {
    StringBuffer none, a, n;
    a.append("aBc");
    n.append("a\0bc\0b"sv);
    EXPECT_TRUE(none.equals(null));
    EXPECT_TRUE(none.beginsWith(""));
    EXPECT_FALSE(none.beginsWith("a"));
    EXPECT_TRUE(a.equalsIgnoreCase("AbC"));
    EXPECT_FALSE(a.equalsIgnoreCase("AbCd"));
    EXPECT_FALSE(n.equals("a"));
    EXPECT_TRUE(a.beginsWith("aB"));
    EXPECT_FALSE(a.beginsWith("ab"));
    EXPECT_FALSE(a.beginsWithIgnoreCase("abcd"));
    EXPECT_TRUE(a.beginsWithIgnoreCaseN("ABx", 2));
    EXPECT_FALSE(a.beginsWithIgnoreCaseN("abc:", 4));
    EXPECT_FALSE(a.beginsWithIgnoreCaseN("ax", 2));
    EXPECT_FALSE(a.beginsWithIgnoreCaseN("abc", 9));
    EXPECT_TRUE(a.endsWith("Bc"));
    EXPECT_FALSE(a.endsWith("bc"));
    EXPECT_FALSE(a.endsWith("aaBc"));
    EXPECT_FALSE(n.endsWith("c"));
    EXPECT_TRUE(n.containsSubstring("bc"));
    EXPECT_FALSE(a.containsSubstring("bc"));
    EXPECT_TRUE(a.containsSubstringNoCase("bC"));
    EXPECT_TRUE(n.containsChar('c'));
    EXPECT_FALSE(a.containsChar('\0'));
    EXPECT_EQ(n.indexOf("b"), 2);
    EXPECT_EQ(a.indexOf("aBc"), 0);
    EXPECT_EQ(a.indexOf("aBcd"), -1);
    EXPECT_EQ(n.countCharOccurances('\0'), 2);
    EXPECT_EQ(a.charAt(2), 'c');
    EXPECT_EQ(a.pCharAt(1)[1], 'c');
    EXPECT_EQ(a.charAt(3) + a.charAt(~0U) + none.lastChar() + *a.pCharAt(3) + *a.pCharAt(~0U), 0);
    XString x;
    x.appendUtf8(null);
    x.appendUtf8(" LOCAL; \u00E5\t");
    x.trim2();
    EXPECT_TRUE(x.beginsWithUtf8("local;", true));
    EXPECT_FALSE(x.beginsWithUtf8("local;", false));
    x.replaceFirstOccuranceUtf8("LOCAL; ", "", false);
    EXPECT_STREQ(x.getAnsi(), "\u00E5");
}

}  // namespace
}  // namespace bouncecheck
