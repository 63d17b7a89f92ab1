#include <gtest/gtest.h>

#include <optional>

#include <bouncecheck/LogNull.h>
#include <bouncecheck/classes/SystemCerts.h>
#include "support/Classification.h"

namespace bouncecheck {
namespace {

/// A message whose subject leads to the body classification.
std::string notice(const std::string& text, const std::string& header = "From: x@relay.example\n") {
    return header + "Subject: Undeliverable\n\n" + text;
}

/// The same with the original attached.
std::string noticeWithOriginal(const std::string& text, const char* subject = "Undeliverable",
                               const char* to = "To: Ann <a@x.example>") {
    return std::string("From: x@relay.example\nSubject: ") + subject +
           "\nContent-Type: multipart/mixed; boundary=b\n\n--b\n\n" + text +
           "\n--b\nContent-Type: message/rfc822\n\n" + to + "\n\nHello\n--b--\n";
}

TEST(BodyClassification, DecidesInTheOrderOfItsSteps) {
    const std::string marker = "Unknown user: a@x.example\n";
    struct Case {
        std::string message;
        int type;
        const char* label;
        const char* address;
        const char* matched = "";
    };
    const Case cases[] = {
        {notice("The a@x.example is no longer a valid email address, W32/Netsky"), 6, "6.8a",
         "a@x.example"},
        {notice(marker + "W32/Netsky, blocked using"), 10, "10.1", "a@x.example", "W32/Netsky"},
        {notice("Unknown user:\nW32/Netsky"), 10, "10.1", "", "W32/Netsky"},
        {notice("W32/Netsky"), 10, "10.2", ""},
        {notice("GFI MailSecurity"), 10, "10.2", "x@relay.example"},
        {notice(marker + "blocked using, mailbox full"), 5, "5.3", "a@x.example", "blocked using"},
        {notice(marker + "mailbox full"), 2, "2.3", "a@x.example", "ailbox full"},
        {notice(marker + "Mailbox is inactive"), 2, "2.3", "a@x.example", "Mailbox is inactive"},
        {notice(marker + "away from the office"), 6, "6.8", "a@x.example"},
        {notice(marker + "Cannot connect to remote host"), 2, "2.1", "a@x.example",
         "Cannot connect to remote host"},
        {notice(marker + "TEMPORARY LOCAL PROBLEM"), 2, "2.1", "a@x.example", ""},
        {notice(marker + "Please Try Later"), 2, "2.1", "a@x.example", ""},
        {notice(marker + "451 temporary"), 2, "2.1", "a@x.example", ""},
        {notice(marker + "status: 4.4.1"), 2, "2.1", "a@x.example", ""},
        {notice(marker + "Delayed Mail"), 7, "7.2", "a@x.example", "Delayed Mail"},
        {notice(marker + "Challenge Response"), 12, "12.4", "a@x.example", "Challenge Response"},
        {notice(marker), 1, "1.10", "a@x.example"},
        {notice("Unknown user: Postmaster@x.example\nFailed Recipient: a@x.example"), 1, "1.10",
         "a@x.example"},
        {notice("(The name was not found at the remote site. Check that"), 3, "3.2", ""},
        {notice("away from the office"), 6, "6.9", "x@relay.example"},
        {notice("away from the office. Sender Address Verification"), 12, "12.7",
         "x@relay.example"},
        {notice("away from the office. account is inactive"), 1, "1.9049", "x@relay.example"},
        {notice("you were unsubscribed from your list"), 9, "9.1", "x@relay.example"},
        {notice("Delayed Mail"), 7, "7.1", ""},
        {notice("Too many invalid recipients"), 2, "2.5", "x@relay.example"},
        {notice("ann a@x.example - no such user here. Challenge Response"), 1, "1.11",
         "a@x.example"},
        {notice("ann a@x.example - no such user here. Challenge Response" + std::string(4000, '.')),
         11, "11.1", ""},
        {notice("Challenge Response"), 12, "12.5", ""},
        {noticeWithOriginal("Sorry"), 1, "1.14", "a@x.example"},
        {noticeWithOriginal("over quota"), 2, "2.2", "a@x.example"},
        {noticeWithOriginal("blocked using"), 2, "2.2", "a@x.example"},
        {noticeWithOriginal("452 4.1.1"), 2, "2.14", "a@x.example"},
        {noticeWithOriginal("Sorry", "Undeliverable: DELAY"), 7, "7.10", "a@x.example"},
        {noticeWithOriginal("Sorry", "Undeliverable: Abuse Report"), 15, "15.2", "a@x.example"},
        {noticeWithOriginal("Sorry", "Undeliverable", "To:"), 11, "11.1", ""},
        {notice("it did not reach you. Your message did not reach us"), 1, "", ""},
        {notice("nothing"), 11, "11.1", ""},
        {notice("nothing", "X-Autoreply-From: e@x.example\n"), 6, "6.482", "e@x.example"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.message);
        const Classification result = classified(c.message);
        EXPECT_EQ(result.type, c.type);
        EXPECT_EQ(result.label, c.label);
        EXPECT_EQ(result.address, c.address);
        EXPECT_EQ(result.values("matchedIndicator"), c.matched);
    }
}

TEST(BodyClassification, TellsTheRuleTableAndWhatItCouldNotClassify) {
    const Classification byRule = classified(notice("Your message did not reach us"));
    EXPECT_EQ(byRule.values("BounceType"), "1");
    EXPECT_EQ(byRule.values("bType"), "1");
    EXPECT_EQ(classified(notice("nothing")).values("m_sbBounceData"), "nothing");
}

TEST(BodyClassification, TestsForAutoRepliesOnceForEachMarkerWithoutAddress) {
    const Classification result = classified(notice("Unknown user:\nFailed Recipient:\nnobody\n"));
    EXPECT_EQ(result.label, "11.1");
    EXPECT_EQ(result.contexts(),
              "checkEmailInner checkAVGMAIL checkSpecialCases1 checkSpecialSubjects "
              "checkSubjectList checkEmailBody CheckingForAutoReply CheckingForAutoReply "
              "CheckingForAutoReply");
}

TEST(BodyClassification, RemembersNothingOfAMessageThatItDidNotLoad) {
    OpenCheck check;
    LogNull log;
    std::optional<Email2> email(notice("Sorry"));
    EXPECT_EQ(check.checkEmailBody(*email, log), BOUNCE_UNCLASSIFIED);
    email.emplace(noticeWithOriginal("Sorry"));
    EXPECT_EQ(check.checkEmailBody(*email, log), BOUNCE_HARD);
    EXPECT_STREQ(check.m_sbBounceAddr.getString(), "a@x.example");
}

TEST(BodyClassification, EndsWithoutVerdictWhereThereIsNoCertificateStore) {
    const SystemCertsHolder::Absence absence;
    BounceCheck check;
    const Classification result = classifyByClass(check, noticeWithOriginal("Sorry"));
    EXPECT_EQ(result.type, BOUNCE_NONE);
    EXPECT_EQ(result.values("numSubjectsMatched"), "1");
    EXPECT_EQ(classifyByClass(check, notice("Delayed Mail")).type, BOUNCE_TRANSIENT);
}

TEST(AutoReply, IsToldByTextSenderOrSubject) {
    struct Case {
        const char* from;
        const char* subject;
        const char* text;
        const char* line;  ///< "" for no auto-reply
    };
    const char* const bySubject = "Found auto-reply indicator in subject.";
    const char* const byText = "Found auto-reply indicator in body.";
    const Case cases[] = {
        {"a@x.example", "Undeliverable", "I am out of the office now", byText},
        {"a@x.example", "Undeliverable", "OUT OF THE OFFICE", ""},
        {"a@x.example", "Undeliverable", "Fr\xc3\xa5nvaro", byText},
        {"LISTSERV@x.example", "Undeliverable", "", "Found auto-reply indicator (1)"},
        {"automated-response@juno.com", "Undeliverable", "", "Found auto-reply indicator (1)"},
        {"Automated-Response@juno.com", "Undeliverable", "", ""},
        {"The Auto Response Desk <a@x.example>", "Undeliverable", "",
         "Found auto-reply indicator (2)"},
        {"a@x.example", "Undeliverable: auto REPLY", "", "Found auto-reply indicator (3)"},
        {"postmaster@x.example", "Email changed", "", "Found auto-reply indicator (4)"},
        {"a@x.example", "Email changed", "", ""},
        {"a@x.example", "SPAM >Fwd: Undeliverable: abwesend", "", bySubject},
        {"a@x.example", "Undeliverable: abwesend", "", bySubject},
        {"a@x.example", "Undeliverable: =?iso-8859-1?q?R=E9ponse?= automatique", "", bySubject},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.from) + ", " + c.subject + ", " + c.text);
        const Classification result =
            classified(std::string("From: ") + c.from + "\nSubject: " + c.subject +
                       "\nX-DSNContext: 1\n\n" + c.text);
        EXPECT_EQ(result.label == "6.9", *c.line != '\0') << result.label;
        EXPECT_EQ(result.logged(c.line), *c.line != '\0');
    }
}

}  // namespace
}  // namespace bouncecheck
