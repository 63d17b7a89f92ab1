#include <gtest/gtest.h>

#include "support/Classification.h"

namespace bouncecheck {
namespace {

TEST(Reports, DecideByTheirFields) {
    struct Case {
        const char* fields;
        const char* text;
        int type;
        const char* label;
    };
    const Case cases[] = {
        {"Action: Failed\n", "", 1, "1.mri"},
        {"ACTION :  failed \n", "", 1, "1.mri"},
        {"Action: DELIVERED\n", "", 7, "7.6a"},
        {"Action: Relayed\n", "", 7, "7.6a"},
        {"Action: delayed\n", "", 7, "7.6a"},
        {"Action: undelivered\nDisposition: x; displayed\n", "", 14, "14.3b"},
        {"Disposition: x; Displayed\n", "", 1, "1.8"},
        {"Action: expanded\n", "", 1, "1.8"},
        {"Action: expanded\n", "Cannot connect to remote host", 2, "2.6"},
        {"Action: failed\nDiagnostic-Code: smtp; 552 Mailbox full\n", "", 2, "2.4"},
        {"Action: failed\nDiagnostic-Code: smtp; 550 W32/Netsky\n", "", 2, "2.4"},
        {"Action: failed\nX-Note: mailbox full\n", "", 1, "1.mri"},
        {"Action: failed\n", "Your mailbox is full", 2, "2.41"},
        {"Action: failed\nDiagnostic-Code: 552 mailbox\n\tfull\n", "", 2, "2.4"},
        {"Action: failed\nX-Note: blocked using a list\n", "", 5, "5.1a"},
        {"Feedback-Type: Virus\nAction: failed\n", "", 10, "10.3"},
        {"Feedback-Type: FRAUD\n", "", 15, "15.1"},
        {"Feedback-Type: abuse\n", "", 15, "15.1"},
        {"Feedback-Type: not-spam\n", "", 7, "7.11"},
        {"Feedback-Type:\nFeedback-Type: abuse\nAction: failed\n", "", 1, "1.mri"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.fields);
        const Classification result = classified(reportMessage(c.fields, c.text));
        EXPECT_EQ(result.type, c.type);
        EXPECT_EQ(result.label, c.label);
    }
}

TEST(Reports, TakeTheRecipientThatTheSenderKnows) {
    struct Case {
        const char* fields;
        const char* text;
        const char* address;
    };
    const Case cases[] = {
        {"Original-Recipient: rfc822;a@x.example\nFinal-Recipient: rfc822;b@x.example\n", "",
         "a@x.example"},
        {"Original-Recipient: rfc822;a@x.example\n", "(generated from z@x.example)", "a@x.example"},
        {"Final-Recipient: RFC822; b@x.example\n", "", "b@x.example"},
        {"Final-Recipient: LOCAL;b\n", "", "b"},
        {"Final-Recipient: Rfc822;b@x.example\n", "", "Rfc822;b@x.example"},
        {"Final-Recipient: rfc822;b@x.example\nOriginal-Rcpt-To: c@x.example\n",
         "b@x.example (generated from c@x.example)", "c@x.example"},
        {"Final-Recipient: rfc822;b@x.example\n", "(generated from c@x.example)", ""},
        {"Final-Recipient:\nFinal-Recipient: rfc822;b@x.example\n", "", ""},
        {"Final-Recipient: rfc822;<b@x.example>\n", "", "b@x.example"},
        {"Final-Recipient: rfc822;/srv/vFileStorage/b@x.example\n", "", ""},
        {"Final-Recipient: rfc822;b+AEA-x+AF8-y.example\n", "", "b@x_y.example"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.fields);
        const std::string fields = std::string("Action: failed\n") + c.fields;
        EXPECT_EQ(classified(reportMessage(fields, c.text)).address, c.address);
    }
}

TEST(Reports, HandOutTheTextThatDecided) {
    const Classification failed = classified(reportMessage("Action: failed\n", "Sorry."));
    EXPECT_EQ(failed.data, "Reporting-MTA: dns; x.example\r\n\r\nAction: failed\r\n");
    const Classification blocked =
        classified(reportMessage("Diagnostic-Code: 554 5.7.1 POLICY VIOLATION\n", "Sorry."));
    EXPECT_TRUE(blocked.data.starts_with("Sorry."));
    EXPECT_EQ(blocked.values("matchedIndicator"), "Policy Violation");
    const Classification full = classified(reportMessage("Action: failed\n", "Quota exceeded."));
    EXPECT_EQ(full.data, "Quota exceeded.");
}

TEST(Reports, TellEachStep) {
    const Classification failed =
        classified(reportMessage("Final-Recipient: rfc822;a@x.example\nAction: failed\n"));
    EXPECT_EQ(failed.contexts(),
              "checkEmailInner checkAVGMAIL checkSpecialCases1 checkMultipartReport "
              "getMultipartReportInfo");
    EXPECT_EQ(failed.values("OriginalRecipient"), "rfc822;a@x.example");
    EXPECT_EQ(failed.values("reportAction"), "failed");
    EXPECT_EQ(failed.values("reportDisposition"), "");
    EXPECT_EQ(failed.values("bounceType"), "1");

    const Classification virus = classified(reportMessage("Feedback-Type: virus\n"));
    EXPECT_EQ(virus.values("feedbackReportBounceType2"), "10");
    EXPECT_FALSE(virus.logged("Getting multipart/report info (2)"));
}

/// `inner` as part 0 of a multipart/mixed with the given parameters.
std::string wrapped(const std::string& inner, const char* parameters, const char* before = "") {
    return std::string("Content-Type: multipart/mixed; boundary=outer") + parameters + "\n\n" +
           before + "--outer\n" + inner + "\n--outer--\n";
}

TEST(Reports, AreFoundInsideAMixedMessageInTheFirstPlaceOnly) {
    const std::string report = reportMessage("Action: failed\n");
    const Classification first = classified(wrapped(report, ""));
    EXPECT_EQ(first.label, "1.mri");
    EXPECT_TRUE(first.logged("Found multipart/mixed --> multipart/report"));
    EXPECT_EQ(classified(wrapped(report, "", "--outer\n\nsee below\n")).type, 0);
}

TEST(Reports, OfTheVirusGatewayAlwaysGetAVerdict) {
    const Classification unknown =
        classified(wrapped(reportMessage("Action: expanded\n"), "; x=AVGMAIL-1"));
    EXPECT_EQ(unknown.label, "1.AVG");
    EXPECT_EQ(unknown.contexts(), "checkEmailInner checkAVGMAIL getMultipartReportInfo");
    EXPECT_EQ(classified(wrapped(reportMessage("Action: delayed\n"), "; x=AVGMAIL-1")).label,
              "7.6a");
    EXPECT_EQ(classified(wrapped(reportMessage("Action: expanded\n"), "; x=avgmail")).label, "1.8");
}

}  // namespace
}  // namespace bouncecheck
