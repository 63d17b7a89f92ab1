#include <gtest/gtest.h>

#include <vector>

#include <bouncecheck/LogNull.h>
#include "bounce/tables/BounceRules.h"
#include "bounce/tables/MailboxFullIndicators.h"
#include "bounce/tables/SoftBounceAndVirusIndicators.h"
#include "support/Classification.h"

namespace bouncecheck {
namespace {

TEST(ContainsIndicator, ReportsTheFirstPhraseInListOrder) {
    OpenCheck check;
    StringBuffer text;
    StringBuffer matched;
    text.setString("over quota; your MAILBOX FULL");
    EXPECT_TRUE(check.containsIndicator(text, MailboxFullIndicators, matched));
    EXPECT_STREQ(matched.getString(), "ailbox full");

    text.setString("nothing here");
    EXPECT_FALSE(check.containsIndicator(text, MailboxFullIndicators, matched));
    EXPECT_STREQ(matched.getString(), "");
}

TEST(ContainsIndicator, SoftBouncesRunOnIntoScannerPhrases) {
    OpenCheck check;
    StringBuffer text;
    StringBuffer matched;
    text.setString("we saw w32/netsky today");
    EXPECT_TRUE(check.containsIndicator(text, SoftBounceIndicators, matched));
    EXPECT_STREQ(matched.getString(), "W32/Netsky");
    text.setString("Unable to relay");
    EXPECT_FALSE(check.containsIndicator(text, VirusIndicators, matched));
}

TEST(ContainsIndicator, EndsAtNullOrAfter2001Entries) {
    OpenCheck check;
    StringBuffer text;
    StringBuffer matched;
    text.setString("needle");
    const auto found = [&](std::size_t place) {
        std::vector<const char*> list(2500, "hay");
        list[place] = "needle";
        list.push_back("");
        return check.containsIndicator(text, list.data(), matched);
    };
    EXPECT_TRUE(found(2000));
    EXPECT_FALSE(found(2001));
    const char* const cut[] = {"hay", nullptr, "needle"};
    EXPECT_FALSE(check.containsIndicator(text, cut, matched));
}

TEST(ContainsIndicator, EmptiesTheMatchFirstEvenWhenThatIsTheText) {
    OpenCheck check;
    const char* const list[] = {"needle", ""};
    StringBuffer other;
    for (StringBuffer* text : {&check.m_sbBounceData, &other}) {
        text->setString("a needle that is too long to be kept in place");
        EXPECT_FALSE(check.containsIndicator(*text, list, *text));
    }
}

TEST(ApplyRules, TellTheTypeAndTheRow) {
    struct Case {
        const char* subject;
        const char* fromAddr;
        int type;
        int row;
    };
    const Case cases[] = {
        {"NDN: x", "", 1, 0},
        {"ndn: x", "", 0, 0},
        {"non-delivery", "", 1, 1},
        {"it was BLOCKED", "MAILER-DAEMON@x.example", 5, 13},
        {"hello", "MAILER-DAEMON@x.example", 1, 14},
        {"hello", "someone@x.example", 0, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.subject);
        OpenCheck check;
        LogNull log;
        check.m_sbSubject.setString(c.subject);
        check.m_sbFromAddr.setString(c.fromAddr);
        int row = -1;
        EXPECT_EQ(check.applyRules(BounceRules, row, log), c.type);
        EXPECT_EQ(row, c.row);
    }
}

TEST(ApplyRules, PassOverWhatTheyDoNotKnow) {
    const BounceRule rules[] = {
        {9, RULE_CONTAINS, "a", 1},
        {RULE_SUBJECT, 9, "a", 2},
        {RULE_SUBJECT, RULE_CONTAINS, "A", 3},
        {RULE_SUBJECT, RULE_CONTAINS, "a", 5},
        {RULE_END, 0, "", 0},
    };
    OpenCheck check;
    LogNull log;
    check.m_sbSubject.setString("a");
    int row = -1;
    EXPECT_EQ(check.applyRules(rules, row, log), 5);
    EXPECT_EQ(row, 3);
}

}  // namespace
}  // namespace bouncecheck
