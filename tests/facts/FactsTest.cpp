#include "facts/Facts.h"

#include <gtest/gtest.h>

#include <string>

#include "mime/Email2.h"
#include "mime/Limits.h"

namespace bouncecheck {
namespace {

std::string part(const std::string& type, const std::string& body) {
    return "--b\nContent-Type: " + type + "\n\n" + body + "\n";
}

Facts factsOfReport(const std::string& parts, const std::string& header = "") {
    return factsOf(
        Email2(header + "Content-Type: multipart/report; boundary=b\n\n" + parts + "--b--\n"));
}

Facts factsOfStatus(const std::string& status) {
    return factsOfReport(part("text/plain", "Sorry.") + part("message/delivery-status", status));
}

std::string outline(const Facts& facts) {
    std::string all;
    for (const RecipientFacts& r : facts.recipients) {
        all += '[' + r.originalRecipient + '|' + r.finalRecipient + '|' + r.action + '|' +
               r.status + '|' + r.diagnosticCode + '|' + r.remoteMta + ']';
    }
    return all;
}

TEST(Facts, KeepsEachRecipientOfADeliveryStatus) {
    const Facts facts = factsOfStatus(
        "Reporting-MTA: dns; mx.example.org\nArrival-Date: today\n\n"
        "Original-Recipient: rfc822;list+2Ba@x.example\nFinal-Recipient: RFC822; <a@x.example>\n"
        "Action: Failed (expired)\nStatus: 5.1.1 (no such user)\n"
        "Remote-MTA: dns; mail.x.example\nDiagnostic-Code: smtp; 550\n  no such user\n\n"
        "Final-Recipient: utf-8; \xC3\xBC@y.example\nAction: delayed\nStatus: 4.4.1\n");
    EXPECT_EQ(facts.reportingMta, "mx.example.org");
    EXPECT_EQ(outline(facts),
              "[list+2Ba@x.example|a@x.example|failed|5.1.1|smtp; 550 no such user|mail.x.example]"
              "[|\xC3\xBC@y.example|delayed|4.4.1||]");
}

TEST(Facts, TellsGroupsApartAsServersWriteThem) {
    const std::pair<const char*, const char*> cases[] = {
        {"Final-Recipient: rfc822;a@x\nAction: failed", "[|a@x|failed|||]"},
        // no blank line between recipients
        {"Final-Recipient: rfc822;a@x\nStatus: 5.0.0\nFinal-Recipient: rfc822;b@x\nStatus: 4.0.0",
         "[|a@x||5.0.0||][|b@x||4.0.0||]"},
        // a blank line between fields
        {"Final-Recipient: rfc822;a@x\n\nAction: failed\n\n\nStatus: 5.0.0\n\n"
         "Final-Recipient: rfc822;b@x\n\nAction: delayed",
         "[|a@x|failed|5.0.0||][|b@x|delayed|||]"},
        // what comes before the recipient is its own
        {"Action: failed\nFinal-Recipient: rfc822;a@x\n\nAction: delayed\nFinal-Recipient: b@x",
         "[|a@x|failed|||][|b@x||||]"},
        {"Original-Recipient: rfc822;a@x\nFinal-Recipient: rfc822;b@x\nAction: failed\n"
         "Action: delayed",
         "[a@x|b@x|failed|||]"},
        {"Original-Recipient: rfc822;a@x\n\nOriginal-Recipient: rfc822;b@x",
         "[a@x|||||][b@x|||||]"},
        {"not a field\nFinal-Recipient: a;b@x\nFinal-Recipient: a b; c@x",
         "[|b@x||||][|a b; c@x||||]"},
        {"Reporting-MTA: dns;x", ""},
        {"", ""},
    };
    for (const auto& [status, expected] : cases) {
        EXPECT_EQ(outline(factsOfStatus(status)), expected) << status;
    }
}

TEST(Facts, ReadsAllFailedRecipientsOfTheHeader) {
    const Facts facts =
        factsOf(Email2("X-Failed-Recipients: a@x.example,\n  <b@x.example>\n"
                       "x-failed-recipients: nobody, c@x.example\n\ntext"));
    EXPECT_EQ(facts.failedRecipients,
              (std::vector<std::string>{"a@x.example", "b@x.example", "c@x.example"}));
}

TEST(Facts, KeepsTheFieldsOfComplaintsAndReceipts) {
    const Facts complaint = factsOfReport(
        part("message/feedback-report", "Feedback-Type: abuse\nUser-Agent: =?utf-8?q?f=C3=BC?="));
    EXPECT_EQ(complaint.report,
              (std::vector<ReportField>{{"Feedback-Type", "abuse"}, {"User-Agent", "f\xC3\xBC"}}));
    const Facts receipt =
        factsOfReport(part("message/disposition-notification",
                           "Final-Recipient: rfc822;a@x\nDisposition: m; displayed"));
    EXPECT_EQ(receipt.report.size(), 2U);
    EXPECT_TRUE(receipt.recipients.empty());
}

TEST(Facts, IdentifiesTheReturnedMessage) {
    const std::string header =
        "From x@y.example Sat Nov 21 10:00:00 2026\nMessage-Id: <1@x>\nTo: A <a@x>\n"
        "Subject: =?utf-8?q?f=C3=BCr?=\n dich\nDate: today\nList-ID: <l.x>\n";
    const ReturnedMessage expected = {"<1@x>", "A <a@x>", "f\xC3\xBCr dich", "today", "<l.x>"};
    for (const char* type : {"message/rfc822", "text/rfc822-headers", "message/global-headers"}) {
        const Facts facts = factsOfReport(part("text/plain", "Subject: not this") +
                                          part(type, header + "\nTo: body"));
        EXPECT_EQ(facts.returned, expected) << type;
    }
    EXPECT_EQ(factsOf(Email2("Subject: own\n\nSubject: body")).returned, ReturnedMessage());
}

TEST(Facts, KeepsSoManyRecipientsOnly) {
    std::string status;
    for (std::size_t i = 0; i < limits::recipients + 5; ++i) status += "Final-Recipient: x;a@x\n\n";
    EXPECT_EQ(factsOfStatus(status).recipients.size(), limits::recipients);
    std::string addresses = "X-Failed-Recipients: a@x";
    for (std::size_t i = 0; i < limits::recipients + 5; ++i) addresses += ",a@x";
    EXPECT_EQ(factsOf(Email2(addresses + "\n\n")).failedRecipients.size(), limits::recipients);
}

}  // namespace
}  // namespace bouncecheck
