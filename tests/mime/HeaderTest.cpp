#include <bouncecheck/Limits.h>
#include <bouncecheck/classes/MimeHeader.h>
#include "mime/Entity.h"
#include "mime/MailText.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

using namespace std::string_literals;

TEST(Header, ReadsSubjects) {
    const Case cases[] = {
        {"SUBJECT \t: \t a  b \t\nSubject: later", "a  b"},
        {"Subject-Line: x\nX-Subject: y\nSub: z\nSubject:\nSubject: second", ""},
        {"Subject:\n\t one\n  t\0o\n \t three"s, "one t\0o three"s},
        {" charset=x\n\ty: z\nSubject: a", "a"},
        {"Subject: =?utf-8?q?a_=C3=A9=20=ZZ?= c", "a \u00E9 =ZZ c"},
        {"Subject: x =?utf-8?B?w6k=?= \n =?utf-8?b?w6k?= y", "x \u00E9\u00E9 y"},
        {"Subject: =?utf-8?Q?=E2=82?=\n =?UTF-8?Q?=AC?=", "\u20AC"},
        {"Subject: =?iso-2022-jp?B?GyRCRnw=?= =?iso-2022-jp?B?S1wbKEI=?=", "\u65E5\u672C"},
        {"Subject: =?x?X?a?= =?x?B?!?= =?x?= =?x?Q?b", "=?x?X?a?= =?x?B?!?= =?x?= =?x?Q?b"},
        {"Subject: =?utf-8?Q?_a=?= =?utf-8?Q?b?c_?=", "a=b?c"},
        {"Subject: caf\xE9 \x80", "caf\u00E9 \u20AC"},
    };
    expectEach(cases, [](Text header) { return subjectOf(Email2(header + "\n\nSubject: no")); });
    EXPECT_TRUE(isUtf8(subjectOf(Email2("Subject: =?x-unknown?Q?=E9?="s))));
}

TEST(Header, KnowsNamesOfAnyLength) {
    for (std::size_t size = 1; size < 40; ++size) {
        const std::string name(size, '~'), value = ": " + std::string(size % 3 * 20, 'x') + "\r\n";
        for (const Text blanks : {"", " ", "\t "}) {
            const std::string text = name + blanks + value;
            const HeaderFields header = HeaderFields::ofMessage(text);
            ASSERT_EQ(header.all().size(), 1u) << text;
            EXPECT_EQ(header.all()[0].name, name);
        }
        for (const char c : {'\x7F', '\x80', '\xFF', '\x1F', '\0'}) {
            std::string text = name + value;
            text[size / 2] = c;
            EXPECT_TRUE(HeaderFields::ofMessage(text).all().empty()) << text;
        }
    }
}

TEST(Header, UsesParameters) {
    const Email2 typed("Content-Type: x/Y;\n a=\"b\""s);
    EXPECT_EQ(answer(typed, &Email2::getHeaderFieldUtf8, "content-type"), "x/Y; a=\"b\"");
    const Case cases[] = {
        {"boundary=\"a b;c\\\"d\"\n\n--a b;c\"d\n\nx", "([x])"},
        {"BOUNDARY = abc (boundary=x) ; charset=x\n\n--abc\n\nx", "([x])"},
        {"(;) x=\"; boundary=y\"; (a \\) b); boundary=abc; boundary=z\n\n--abc\n\nx", "([x])"},
        {"boundary*1=\"c d\"; boundary*0=ab\n\n--abc d\n\nx", "([x])"},
        {"junk; =; boundary*0*=''%61; boundary*1=%62; boundary=x\n\n--a%62\n\nx", "([x])"},
    };
    expectEach(cases, [](Text t) { return outlineOf(Email2("Content-Type: multipart/x; " + t)); });
}

TEST(Header, MatchesWholeValues) {
    const Email2 mail("x-autoreply:  Yes \nX-Two: no\nX-Two: =?utf-8?Q?a_b?=\n\n"s);
    const auto match = std::bind_front(&Email2::hasHeaderMatchingUtf8, &mail);
    EXPECT_TRUE(match("X-Autoreply", "yes", true, noLog));
    EXPECT_TRUE(match("X-Two", "a*", false, noLog));
    EXPECT_FALSE(match("X-Autoreply", "yes", false, noLog));
    EXPECT_FALSE(match("X-Two", "a", true, noLog));
}

TEST(Header, IsReadUpToItsLimits) {
    std::string value = "x";
    while (value.size() < limits::fieldValue + 10) value += "\u00E9";
    StringBuffer subject;
    Email2("Subject: " + value + "\n\n").getSubjectUtf8(subject, noLog);
    EXPECT_EQ(subject.view(), value.substr(0, limits::fieldValue - 1));

    std::string fields;
    for (std::size_t i = 1; i < limits::headerFields; ++i) fields += "a:\n";
    const Entity mail(fields + "Last: 1\nBeyond: 1\n\nbody");
    EXPECT_TRUE(mail.header().find("Last"));
    EXPECT_FALSE(mail.header().find("Beyond"));
    EXPECT_EQ(mail.body().view(), "body");
}

TEST(MimeHeader, ReadsHeaderLines) {
    MimeHeader header;
    StringBuffer out;
    const char* text = "Tox: no\rTO :\n =?utf-8?Q?J=C3=B6?=\r\n <j@b>\n\nTo: body";
    for (const char* block : {text, "", "To: old", static_cast<const char*>(nullptr), text})
        header.loadMimeHeaderText(block, nullptr, 0, out, noLog);
    header.getMimeFieldUtf8_2("Toxic", 2, out, noLog);
    EXPECT_EQ(out.view(), "J\u00F6 <j@b>");
}

}  // namespace
}  // namespace bouncecheck
