#include "facts/FactsOf.h"

#include <gtest/gtest.h>

#include <string>

#include <bouncecheck/Limits.h>
#include "mime/Entity.h"
#include "support/Notices.h"

namespace bouncecheck {
namespace {

Facts factsOfReport(const std::string& parts) { return factsOf(Entity(report(parts))); }

TEST(Facts, KeepsTheFieldsOfComplaintsAndReceipts) {
    const Facts complaint = factsOfReport(
        part("message/feedback-report", "Feedback-Type: abuse\nUser-Agent: =?utf-8?q?f=C3=BC?="));
    EXPECT_EQ(complaint.report,
              (std::vector<ReportField>{{"Feedback-Type", "abuse"}, {"User-Agent", "f\xC3\xBC"}}));
    const Facts receipt =
        factsOfReport(part("message/disposition-notification",
                           "Final-Recipient: rfc822;a@x\nDisposition: m; displayed"));
    EXPECT_EQ(receipt.report.size(), 2U);
}

TEST(Facts, IdentifiesTheReturnedMessage) {
    const std::string header =
        "From x@y.example Sat Nov 21 10:00:00 2026\nMessage-Id: <1@x>\nTo: A <a@x>\n"
        "Subject: =?utf-8?q?f=C3=BCr?=\n dich\nDate: today\nList-ID: <l.x>\n";
    const ReturnedMessage expected = {"<1@x>", "",      "A <a@x>", "f\xC3\xBCr dich",
                                      "today", "<l.x>", ""};
    for (const char* type : {"message/rfc822", "text/rfc822-headers", "message/global-headers"}) {
        const Facts facts = factsOfReport(part("text/plain", "Subject: not this") +
                                          part(type, header + "\nTo: body"));
        EXPECT_EQ(facts.returned, expected) << type;
    }
    EXPECT_EQ(factsOf(Entity("Subject: own\n\nSubject: body")).returned, ReturnedMessage());
}

TEST(Facts, IdentifiesAMessageThatCameBackInTheText) {
    const Facts facts =
        factsOf(Entity("Subject: failure notice\n\nIt could not be delivered.\n\n"
                       "--- Below this line is a copy of the message.\n\n"
                       "Return-Path: <x@x>\nMessage-ID: <1@x>\nTo: a@x\n\nHello"));
    EXPECT_EQ(facts.returned.messageId, "<1@x>");
    EXPECT_EQ(facts.returned.to, "a@x");
}

TEST(Facts, NamesTheReportingHost) {
    EXPECT_EQ(factsOfReport(part("message/delivery-status", "Reporting-MTA: dns; x")).reportingMta,
              "x");
}

TEST(Facts, KeepsWholeValuesUpToOneBudget) {
    const std::string value(limits::fieldValue - 8, 'x');
    std::string fields;
    for (const char* name : {"A", "B", "C", "D"})
        fields.append(name).append(": ").append(value + "\n");
    const Facts facts = factsOfReport(part("message/feedback-report", fields) +
                                      part("message/rfc822", "To: a@x\n"));
    ASSERT_EQ(facts.report.size(), 4U);
    EXPECT_EQ(facts.report[2].value, value);
    EXPECT_EQ(facts.report[3].value, "");
    EXPECT_EQ(facts.returned, ReturnedMessage());
}

TEST(Facts, LeavesOutWhatTheEndOfALongFieldCuts) {
    const std::string list = "(" + std::string(limits::fieldValue - 16, 'x') + ") a@x, b@y.example";
    EXPECT_EQ(factsOfReport(part("message/rfc822", "To: " + list)).returned, ReturnedMessage());
}

}  // namespace
}  // namespace bouncecheck
