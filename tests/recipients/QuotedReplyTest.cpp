#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

#include "support/Notices.h"

namespace bouncecheck {
namespace {

std::string replaced(std::string text, std::string_view what, std::string_view with) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size()) {
        text.replace(at, what.size(), with);
    }
    return text;
}

/// Each system has its own words around a reply, and its own way to fold it, which say no more.
TEST(QuotedReply, SaysTheSameInTheNoticeOfEachSystem) {
    const std::string frames[] = {
        "<a@x.example>: host mx.x.example[192.0.2.1] said: % (in reply to RCPT TO command)\n",
        "<a@x.example>:\n192.0.2.1 does not like recipient.\nRemote host said: %\nGiving up.\n",
        "failed:\n\n  a@x.example\n    SMTP error after RCPT TO:<a@x.example>:\n    %\n",
        ">>> RCPT To:<a@x.example>\n<<< %\n550 5.1.1 <a@x.example>... User unknown\n",
        "<a@x.example>\n\n>>> RCPT To:<a@x.example>\n<<< %\n554 5.0.0 Service unavailable\n",
        "Your mail to a@x.example was not delivered. The response was:\n\n%\n",
        "undeliverable to a@x.example\n  RCPT TO generated following response:\n  %\n",
        "Failed recipient(s):\na@x.example\n\nError message:\n%\n\nDetails:\n  To: a@x.example\n",
        "was not delivered to:\n\n  a@x.example\n\nbecause:\n\n  %\n",
        "a@x.example\nmx.x.example #% ##\n",
        "An error occurred: try again, or ask us.\n\na@x.example\n#< #5.0.0 smtp;%> #SMTP#\n",
        "a@x.example\n\nIt was rejected by the recipient domain. It said: % (state 14).\n",
    };
    const std::pair<std::string, const char*> replies[] = {
        {"550 5.1.1 User unknown", "unknown-mailbox suppress"},
        {"550 Mailbox a~does not exist", "unknown-mailbox suppress"},
        {"550 Unknown user. If you think so,~write", "unknown-mailbox suppress"},
        {"550 Mailbox a does~not exist for~people outside", "unknown-mailbox retry"},
        {"550 One or more~recipients do not exist", "unknown-mailbox retry"},
        {"550 5.7.26 user~unknown", "unknown-mailbox retry"},
        {"517 Domain does not exist:~own.example", "policy fix"},
        {"550 Your~domain does not exist", "policy fix"},
        {"535 user~unknown", "policy fix"},
        {"550-192.0.2.9 is blocked~using a blacklist", "reputation fix"},
    };
    for (const std::string& frame : frames) {
        for (const auto& [reply, told] : replies) {
            for (const char* fold : {" ", "\n    "}) {
                const bool isLine = frame.find("<<< %") != std::string::npos;
                const std::string text =
                    replaced(frame, "%", replaced(reply, "~", isLine ? " " : fold));
                EXPECT_EQ(advised(notice(text)), std::string("a@x.example ") + told) << text;
            }
        }
    }
}

/// What stands beside a reply, or within it, is about others, or nothing that the system knows.
TEST(QuotedReply, IsToldFromWhatIsAroundIt) {
    const std::string failed = "Your mail to a@x.example was not delivered. ";
    const std::pair<std::string, const char*> cases[] = {
        // in the words of the system that quotes it
        {">>> RCPT To:<a@x.example>\n<<< 550-5.7.1 refused, see\n<<< 550 5.7.1 us\n"
         "550 <a@x.example>... User unknown",
         "a@x.example policy fix"},
        {">>> DATA\n<<< 550 <a@x.example> no\n550 <a@x.example>... User unknown\n"
         "<<< 550 <b@x.example> no such user\n550 <b@x.example>... User unknown",
         "a@x.example other retry; b@x.example unknown-mailbox suppress"},
        {"<a@x.example>\n\n>>> DATA\n<<< 554 rejected as spam\n554 5.0.0 Service unavailable",
         "a@x.example content fix"},
        {"550 <a@x.example>... User unknown", "a@x.example unknown-mailbox suppress"},
        // with the address of a helper, of another, or of the recipient
        {failed + "\n550-No such user. If this is wrong, write to\n550 c@x.example",
         "a@x.example unknown-mailbox suppress"},
        {"a@x.example\n\nmx.x.example gave this error:\n<me@own.example>: user unknown",
         "a@x.example policy fix"},
        {"<a@x.example>:\nIt said: 550 5.1.1 User unknown: b@y.example",
         "a@x.example unknown-mailbox suppress"},
        {"<a@x.example>: It said: 550 User unknown (b@y.example)",
         "a@x.example unknown-mailbox retry"},
        {"failed:\n\n  a@x.example\n    It said: 550 User unknown\n    (b@y.example)",
         "a@x.example unknown-mailbox retry"},
        {"was delivered to a@x.example, but it could not be delivered to:\n550 5.1.1 User unknown "
         "(b@y.example)",
         "b@y.example unknown-mailbox suppress"},
        {failed + "Contact your administrator.\n\n550 5.1.1 <a@x.example>: User unknown",
         "a@x.example unknown-mailbox suppress"},
        {failed + "\n\n554 5.7.1, later it said:\n\n550 5.1.1 rejected", "a@x.example policy fix"},
        {"<t@y.example>\n550 <b@y.example> user unknown\n250 <c@y.example> OK",
         "t@y.example other retry; b@y.example unknown-mailbox suppress"},
        {"<a@x.example>: One or more recipients were rejected: 550 user unknown",
         "a@x.example unknown-mailbox retry"},
        {"<a@x.example>: Sender check failed. 550 5.0.0 No such user. If you think so, write",
         "a@x.example unknown-mailbox retry"},
        {failed + "\nUnknown address error 550-'Mailbox a@x.example does not exist'\n",
         "a@x.example unknown-mailbox suppress"},
        {"failed:\n\n  a@x.example\n\nError:\n550 Sender user could not be located\n\n"
         "RCPT TO: a@x.example\nTo: a@x.example\n",
         "a@x.example policy fix"},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(advised(notice(text)), expected) << text;
    const std::string row =
        "<p>This failed:</p><table><tr><td>a@x.example</td><td>550 5.1.8 Sender me@own.example "
        "refused</td></tr></table>";
    EXPECT_EQ(advised(notice(row, "text/html")), "a@x.example policy fix");
}

TEST(QuotedReply, AddsToAReport) {
    const auto group = [](const std::string& fields) {
        return "Final-Recipient: rfc822; a@x.example\nAction: failed\n" + fields + "\n";
    };
    const auto read = [&](const std::string& text, const std::string& fields) {
        return advised(
            report(part("text/plain", text) + part("message/delivery-status", group(fields))));
    };
    EXPECT_EQ(read("<a@x.example>: 552 5.2.2 Mailbox is full", "Status: 5.1.1"),
              "a@x.example mailbox-full retry");
    EXPECT_EQ(read("Failed to deliver to 'a@x.example'\nmx.x.example says:\n 550 User unknown "
                   "(b@y.example)",
                   "Status: 5.0.0"),
              "a@x.example unknown-mailbox retry");
    // the first line of a reply, and all of it
    EXPECT_EQ(read("<a@x.example>\n    (reason: 550-mailbox unavailable)\n\n>>> DATA\n"
                   "<<< 550-mailbox unavailable\n<<< 550 Sender address is not allowed",
                   "Diagnostic-Code: smtp; 550-mailbox unavailable"),
              "a@x.example policy fix");
    // a report in the text, below a header that names the recipient
    EXPECT_EQ(advised("X-Failed-Recipients: a@x.example\n" +
                      notice("Sorry.\n\nReporting-MTA: dns; x\n\n" +
                             group("Diagnostic-Code: smtp; 550 5.1.1 unknown"))),
              "a@x.example unknown-mailbox suppress");
}

}  // namespace
}  // namespace bouncecheck
