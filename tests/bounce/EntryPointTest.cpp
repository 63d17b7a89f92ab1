#include <gtest/gtest.h>

#include "bounce/Classification.h"
#include "log/FailingLog.h"

namespace bouncecheck {
namespace {

TEST(CheckEmail, CleansTheAddress) {
    const std::string path(288, 'p');
    struct Case {
        std::string found;
        std::string cleaned;
    };
    const Case cases[] = {
        {path + "vFileStorage", path + "vFileStorage"},  // 300 bytes
        {path + "vFileStorage.", ""},
        {path + "vfilestorage.", path + "vfilestorage."},
        {"<a<b@x.example>> tail", "ab@x.example tail"},
        {"a<b@x.example>", "a<b@x.example>"},
        {"<a+AEA-x+AF8-y.example>", "a@x_y.example"},
        {"@@x.example", "@x.example"},
        {"<>", ""},
    };
    for (const Case& c : cases) {
        OpenCheck check;
        check.m_sbBounceAddr.setString(std::string_view(c.found));
        check.cleanBounceAddress();
        EXPECT_EQ(check.m_sbBounceAddr.view(), c.cleaned);
    }
}

TEST(CheckEmail, LooksElsewhereForAMissingAddress) {
    const auto returned = [](const char* to, const char* header) {
        return reportMessage(std::string("Action: failed\n--b1\nContent-Type: text/RFC822-headers\n"
                                         "\nReceived: x\nTo: ") +
                                 to,
                             "", header);
    };
    struct Case {
        std::string message;
        const char* address;
    };
    const Case cases[] = {
        {returned("Ann <a@x.example>, <b@x.example>", ""), "a@x.example"},
        {returned("@a+AEA-x.example", ""), "@a+AEA-x.example"},
        {returned("", "X-Env-Sender: <e@x.example>\n"), "<e@x.example>"},
        {reportMessage("Action: failed\n", "", "X-Env-Sender: e@x.example\n"), "e@x.example"},
        {reportMessage("Action: failed\n"), ""},
        {reportMessage("Action: failed\n", "Mailbox full"), "mta@relay.example"},
        {reportMessage("Final-Recipient: rfc822;a@x.example\n", "Mailbox full"), "a@x.example"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.message);
        const Classification result = classified(c.message);
        EXPECT_EQ(result.address, c.address);
        EXPECT_EQ(result.logged("Using FROM address for soft bounce."),
                  result.address == "mta@relay.example");
    }
}

TEST(CheckEmail, TakesAnUndecidedMessageFromSomebodyAwayForAnAutoReply) {
    const auto from = [](const char* text) {
        return classified(std::string("From: Eva <eva@x.example>\nSubject: Re: plan\n\n") + text);
    };
    EXPECT_EQ(from("Hi, I will be out of the office.").label(), "6.481");
    EXPECT_EQ(from("Hi, I am out of the office.").type, BOUNCE_AUTO_REPLY);
    EXPECT_EQ(from("Hi, I am out of the office.").address, "eva@x.example");
    EXPECT_EQ(from("Hi, I'm out of the office.").type, BOUNCE_NONE);
    EXPECT_EQ(from("HI, I AM OUT OF THE OFFICE.").type, BOUNCE_NONE);
    const Classification nobody = classified("\nI am out of the office.");
    EXPECT_EQ(nobody.type, BOUNCE_AUTO_REPLY);
    EXPECT_TRUE(nobody.logged("Using FROM address for out-of-office/auto-reply."));
}

TEST(CheckEmail, RemembersNothingOfTheMessageBefore) {
    const std::string report = reportMessage("Final-Recipient: rfc822;a@x.example\nAction: failed");
    const std::string letter = "From: eva@x.example\nSubject: hello\n\nSee you.\n";
    BounceCheck check;
    EXPECT_EQ(classifyWith(check, report), classified(report));
    EXPECT_EQ(classifyWith(check, letter), classified(letter));
    EXPECT_EQ(classifyWith(check, ""), classified(""));
}

TEST(CheckEmail, GivesItsVerdictWhateverTheLogDoes) {
    Email2 email(reportMessage("Final-Recipient: rfc822;a@x.example\nAction: failed\n"));
    BounceCheck check;
    FailingLog log;
    StringBuffer address;
    StringBuffer data;
    EXPECT_EQ(check.checkEmail(email, address, data, log), BOUNCE_HARD);
    EXPECT_STREQ(address.getString(), "a@x.example");
}

}  // namespace
}  // namespace bouncecheck
