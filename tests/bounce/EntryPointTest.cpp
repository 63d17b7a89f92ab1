#include <gtest/gtest.h>

#include <future>

#include "log/FailingLog.h"
#include "mime/tables/Charsets.h"
#include "support/Classification.h"

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
    EXPECT_EQ(from("Hi, I will be out of the office.").label, "6.481");
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

TEST(CheckEmail, ReadsCharsetsAlikeInEitherOrder) {
    // Byte order marks, and texts that end in the middle of a character or shifted.
    std::vector<std::string> messages;
    for (const Charset& charset : charsets) {
        std::string names(charset.names);
        for (const char* decoration : {"", "(+"}) {
            const std::string name = names.substr(0, names.find(' ')) + decoration;
            for (const char* text : {"=FE=FF=00A", "=FF=FEA=00", "=1B$B", "+AO", "=0E!", "F|=C4"}) {
                messages.push_back("Subject: =?" + name + "?q?" + text + "?=\n\n");
            }
        }
    }
    // Each thread has its own conversions.
    const auto classifyAll = [](const auto& all) {
        return std::async(std::launch::async, [&all] {
            std::vector<Classification> results;
            for (const std::string& message : all) results.push_back(classified(message));
            return results;
        });
    };
    const std::vector<std::string> reversed(messages.rbegin(), messages.rend());
    const auto forwards = classifyAll(messages).get();
    auto backwards = classifyAll(reversed).get();
    std::ranges::reverse(backwards);
    for (std::size_t i = 0; i < messages.size(); ++i) {
        EXPECT_EQ(forwards[i].values("subject"), backwards[i].values("subject")) << messages[i];
        EXPECT_EQ(forwards[i], backwards[i]) << messages[i];
    }
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
