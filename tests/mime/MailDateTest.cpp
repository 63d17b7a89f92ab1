#include "mime/MailDate.h"

#include <gtest/gtest.h>

#include <string>

namespace bouncecheck {
namespace {

TEST(MailDateTest, ReadsDates) {
    constexpr std::int64_t expected = 1'221'760'444;  // 2008-09-18 17:54:04 UTC
    for (const char* text : {
             "Thu, 18 Sep 2008 17:54:04 +0000",
             "18 Sep 2008 19:54:04 +0200",
             "Thu,18 Sep 2008 10:54:04 -0700 (PDT)",
             "(a (nested \\) comment)) Thu, 18 (x) September 08 12:54:04 CDT",
             "Thu Sep 18 17:54:04 2008",
             "thu,\r\n\t18 sep 108 17:54:04 Mars",
             "18 Sep 2008 13:24:04 -0430 (unclosed",
         }) {
        EXPECT_EQ(parseMailDate(text), expected) << text;
    }
    EXPECT_EQ(parseMailDate("1 Jan 1970 00:00 GMT"), 0);
    EXPECT_EQ(parseMailDate("31 Dec 69 23:59:59 GMT"), -1);
    EXPECT_EQ(parseMailDate("29 Feb 2000 24:00 GMT"), std::nullopt);
    EXPECT_EQ(parseMailDate("29 Feb 2000 00:00:60 GMT"), 951'782'460);
    EXPECT_EQ(parseMailDate("1 Jan 2008 00:00 +0100 GMT"), 1'199'142'000);
}

TEST(MailDateTest, RefusesWhatIsNone) {
    const std::string hostile(1 << 20, '(');
    const std::string manyDigits(1 << 20, '9');
    for (const std::string& text : {
             std::string(),
             std::string("today"),
             std::string("18 Sep 2008"),
             std::string("31 Sep 2008 1:00"),
             std::string("29 Feb 2001 1:00"),
             std::string("0 Sep 2008 1:00"),
             std::string("18 Sep 2008 1:60"),
             std::string("18 Sep 2008 1:00 2:00"),
             std::string("18 Sep 2008 1:00 +99x9"),
             std::string("18 Sep 2008 2009 1:00"),
             std::string("18 Sep 1899 1:00"),
             std::string("18 Sep 2008 :"),
             std::string("18 Sep 2008 -1:00"),
             std::string("18 Sep 2008 1:\xff"),
             std::string("\0 18 Sep 2008 1:00", 17),
             std::string("(\\"),
             hostile,
             manyDigits,
         }) {
        EXPECT_EQ(parseMailDate(text), std::nullopt) << text.substr(0, 40);
    }
}

}  // namespace
}  // namespace bouncecheck
