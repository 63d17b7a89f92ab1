#include <gtest/gtest.h>

#include <string_view>

#include "reasons/ReasonFinder.h"

namespace bouncecheck {
namespace {

/// The other lines stand in the notice.
TEST(NoticeReasons, AreThoseOfTheOtherLinesOfAReply) {
    const std::string_view first = "550-Mailbox unavailable";
    const std::string_view notice = "<<< 550-Mailbox unavailable\r\n<<< 550 It is over quota";
    EXPECT_EQ(reasonOf({.text = first}, notice).reason, Reason::mailboxFull);
    EXPECT_EQ(reasonOf({.text = "550-Mailbox unavailable\r\n550 See us"}, notice).reason,
              Reason::unknownMailbox);
}

/// What a notice says beside a reply that says less.
TEST(NoticeReasons, CountWhereTheReplySaysLess) {
    struct Case {
        std::string_view reply, notice, row;
        bool isSure, isTransient;
    };
    const Case cases[] = {
        // the phrases, then the status, then hints
        {"554 failed", "The mailbox is full, sorry.", "mailbox is full", true, false},
        {"554 failed", "The mailbox does not exist.", "mailbox does not exist", true, false},
        {"554 failed", "Connection refused, unknown", "connection refused", true, false},
        {"gone", "550 5.1.1 connection refused", "X.1.1", true, false},
        {"451 gone", "It was rejected.", "rejected", false, true},
        // for the time being
        {"554 failed", "No such user, temporarily.", "no such user", true, true},
        {"gone", "450 no such user", "no such user", true, true},
        {"554 gone", "450 no such user", "no such user", true, false},
        // only supposed, or of something of a mailbox
        {"554 failed", "If the mailbox does not exist", "mailbox does not exist", false, false},
        {"554 failed", "License for user not found", "user not found", false, false},
        {"550-failed", "Mailbox disabled until 1 May", "mailbox disabled", false, false},
        // another cause beside it, not elsewhere
        {"554 failed", "User not found: LDAP timeout", "user not found", false, false},
        {"554 failed", "User not found.\r\n\r\nElse: LDAP timeout", "user not found", true, false},
        // a status without the code of its reply, of another one, or of several
        {"gone", "550 gone 5.1.1", "X.1.1", false, false},
        {"gone", "550 5.1.1 gone: b@x.example", "X.1.1", false, false},
        {"gone", "550 5.1.1 gone: a@x.example", "X.1.1", true, false},
        {"gone", "550 5.1.1 gone\r\n550 5.7.1 gone", "X.1.1", false, false},
        {"550 gone", "550 5.1.1 gone", "", false, false},
        // a mailbox beside a code for something else
        {"550 5.7.1 gone", "No such user", "X.7.1", false, false},
        {"550 5.7.1 gone", "Mailbox unavailable", "X.7.1", false, false},
        {"550 5.7.1 gone", "The user is unknown.", "X.7.1", false, false},
        // that the mail is late, or was refused, beside a code that says why
        {"421 4.7.0 no", "Will keep trying", "X.7.0", false, true},
        {"523 no", "Will keep trying", "523", false, true},
        {"hm 4.3.2", "Will keep trying", "X.3.2", false, true},
        {"421 4.3.2 no", "It was rejected", "X.3.2", false, true},
        {"523 no", "It was rejected", "523", false, false},
    };
    for (const Case& c : cases) {
        const ReasonFinding finding =
            reasonOf({.text = c.reply, .address = "a@x.example"}, c.notice);
        EXPECT_EQ(finding.row, c.row) << c.reply << " / " << c.notice;
        EXPECT_EQ(finding.isSure, c.isSure) << c.reply << " / " << c.notice;
        EXPECT_EQ(finding.isTransient, c.isTransient) << c.reply << " / " << c.notice;
    }
    // A report that states a status has decided.
    EXPECT_EQ(reasonOf({.status = "5.0.0", .text = "gone"}, "550 5.1.1 gone").reason,
              Reason::other);
    const ReasonFinding quoted = reasonOf({.text = "554 failed"}, "The mailbox is full, sorry.");
    EXPECT_TRUE(quoted.inNotice);
    EXPECT_EQ(quoted.at, 4U);
}

/// A reply that says nothing of a mailbox says more than those who quote it.
TEST(NoticeReasons, AreNotThoseOfASummary) {
    const std::string_view summary =
        ">>> RCPT\r\n<<< 550 P-6\r\n550 5.1.1 <a@x.example>... User unknown\r\n";
    EXPECT_EQ(reasonOf({.text = "550 5.7.1 P-6"}, "No such user, perhaps.").row, "X.7.1");
    EXPECT_EQ(reasonOf({.text = "550 P-6"}, summary).reason, Reason::other);
    EXPECT_EQ(reasonOf({.text = "550 P-6"}, "User unknown").reason, Reason::unknownMailbox);
}

}  // namespace
}  // namespace bouncecheck
