#include <gtest/gtest.h>

#include <span>

#include <bouncecheck/classes/SystemCerts.h>
#include "support/Classification.h"

namespace bouncecheck {
namespace {

TEST(PatternLists, NameEachPatternThatMatched) {
    struct Case {
        const char* from;
        const char* subject;
        const char* fromMatches;
        const char* subjectMatches;
    };
    // A report with fields gets no verdict from its text, so that every pattern is tried.
    const Case cases[] = {
        {"", "Fwd: Undeliverable", "", ""},
        {"", "FWD: Undeliverable", "", ""},
        {"", "Fw: mail", "", ""},
        {"", "Undeliverable mail", "", "Undeliverable mail*|Undeliverable"},
        {"", "undeliverable mail", "", "Undeliverable"},
        {"", "Unzustellbar: x", "", "Unzustellbar*|Unzustellbar:"},
        {"", "Recipient does not exist, Returned mail - x", "",
         "*Recipient does not exist**Returned mail -*|*cipient does not exist*"},
        {"", "Failed mail", "", "Failed mail"},
        {"", "", "", ""},
        {"mailmarshal@x.example", "x", "mailmarshal@*", ""},
        {"MailMarshal@x.example", "x", "", ""},
        {"x.antispam@x.example", "x", "*antispam*", ""},
        {"spam@mailblocks.example", "x", "spam@mailblocks", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.from) + ", " + c.subject);
        const Classification result =
            classified(std::string("Content-Type: multipart/report; boundary=b\nFrom: ") + c.from +
                       "\nSubject: " + c.subject + "\n\n--b\n\nx\n--b--\n");
        EXPECT_EQ(result.values("FromMatch"), c.fromMatches);
        EXPECT_EQ(result.values("SubjectMatch"), c.subjectMatches);
    }
}

TEST(PatternLists, CountSubjectsWithoutAVerdict) {
    EXPECT_EQ(classified("Subject: x\n\nx").values("numSubjectsMatched"), "0");
    EXPECT_EQ(classified("Subject: fwd: x\n\nx").values("numSubjectsMatched"), "");
    EXPECT_EQ(classified("Subject: Undeliverable\n\nx").values("numSubjectsMatched"), "");
}

TEST(PatternLists, TakeNoInvoiceOfAPostmasterForABounce) {
    EXPECT_EQ(classified("From: Postmaster@x.example\nSubject: Your INVOICE\n\nx").type, 0);
    const Classification other = classified("From: Postmaster@x.example\nSubject: Hi\n\nx");
    EXPECT_EQ(other.type, BOUNCE_HARD);
    EXPECT_TRUE(other.logged("Bounce type determined after checking email body.."));
    EXPECT_EQ(other.values("FromMatch"), "Postmaster@*");
}

struct Case {
    const char* header;
    const char* text;
    int type;
    const char* label;
    const char* address;
};

void expectAll(std::span<const Case> cases) {
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.header) + "\n" + c.text);
        const Classification result = classified(std::string(c.header) + "\n\n" + c.text);
        EXPECT_EQ(result.type, c.type);
        EXPECT_EQ(result.label, c.label);
        EXPECT_EQ(result.address, c.address);
    }
}

TEST(SpecialSubjects, HoldTheAddress) {
    const Case cases[] = {
        {"Subject: Returned mail: User unknown: <a@x.example> and more", "", 1, "1.1",
         "a@x.example and more"},
        {"Subject: Delivery failure (a@x.example) now", "", 1, "1.2", "a@x.example now"},
        {"Subject: Delivery failure (", "", 1, "1.2", ""},
        {"Subject: Unable to deliver to   a@x.example again", "", 1, "1.3", "a@x.example"},
        {"Subject: Unable to deliver to you", "", 1, "1.3", ""},
        {"Subject: DELIVERY FAILURE: User ann ( a@x.example) not", "", 1, "1.4", "a@x.example"},
        {"Subject: DELIVERY FAILURE: User ann", "", 1, "1.4", ""},
        {"Subject: Invalid E-Mail Address", "", 11, "11.1", ""},
        {"Subject: Your Confirmation\nX-Whitelist-Confirmation:\nFrom: e@x.example", "", 0, "", ""},
    };
    expectAll(cases);
}

TEST(SpecialCases, OfParticularProviders) {
    const Case cases[] = {
        {"From: mailer-daemon@AOL.com", "No such user:\n ann \n", 1, "1.AOL", "ann@aol.com"},
        {"From: MAILER-DAEMON@aol.com", "users: ann bob", 0, "", ""},
        {"From: MAILER-DAEMON@aol.com", ":01234567890123456789012345678901234567890123456789", 0,
         "", ""},
        {"From: \"a@x.example\" <q@SpamArrest.com>", "", 12, "12.6", "a@x.example"},
        {"From: q@spamarrest.com\nErrors-To: <No-Reply@spamarrest.com>\nSubject: x (verification)",
         "", 12, "12.8", ""},
        {"From: q@notspamarrest.com\nErrors-To: no-reply@spamarrest.com", "", 0, "", ""},
        {"From: e@x.example", "antispam Captcha.jsp", 0, "", ""},
        {"From: e@x.example\nTo: a@x.example", "see WWW.boxbe.com", 12, "12.12", "a@x.example"},
    };
    expectAll(cases);
    const Classification noColon = classified("From: MAILER-DAEMON@aol.com\n\nnothing");
    EXPECT_TRUE(noColon.logged("No colon found."));
    EXPECT_EQ(noColon.values("sbBounceData"), "nothing");
    const Classification two = classified("From: MAILER-DAEMON@aol.com\n\nusers: ann bob\n");
    EXPECT_TRUE(two.logged("No email address found in AOL bounce."));
    EXPECT_EQ(two.values("sb"), "ann bob");
}

// The plain cases are samples; these are the edges of their rules.
TEST(SpecialCases, OfParticularHeaders) {
    const Case cases[] = {
        {"X-Autoreply: YES\nFrom: e@x.example", "", 6, "6.15", "e@x.example"},
        {"X-Autoreply: yes, sir\nFrom: e@x.example", "", 0, "", ""},
        {"Subject: OUT OF OFFICE\nFrom: e@x.example", "", 6, "6.13", "e@x.example"},
        {"Reply-To: WebMaster-Confirm@x.example", "Unknown user: a@x.example", 12, "12.3",
         "a@x.example"},
        {"X-DSNContext: 1\nAuto-Submitted: yes", "Unknown user: a@x.example", 1, "1.10",
         "a@x.example"},
        {"Delivered-To: AutoResponder\nFrom: e@x.example", "", 6, "6.2", "e@x.example"},
        {"Precedence: Auto_Reply\nFrom: e@x.example", "", 0, "", ""},
    };
    expectAll(cases);
}

TEST(SpecialCases, EndAtTheContextOfADeliveryStatus) {
    const SystemCertsHolder::Absence absence;  // makes the body classification give 0
    BounceCheck check;
    const Classification result = classifyByClass(
        check, "X-DSNContext: 1\nDelivered-To: autoresponder\n\nthis is an auto response");
    EXPECT_EQ(result.type, BOUNCE_NONE);
}

}  // namespace
}  // namespace bouncecheck
