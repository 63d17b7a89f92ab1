#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "support/Notices.h"

namespace bouncecheck {
namespace {

/// What a report says of a@x.example, whose mail was sent on to b@y.example.
std::string sentOn(const std::string& fields, const std::string& text = "Sorry.") {
    return advised(report(part("text/plain", text) +
                          part("message/delivery-status",
                               "Original-Recipient: rfc822; a@x.example\nFinal-Recipient: rfc822; "
                               "b@y.example\nAction: failed\n" +
                                   fields + "\n")));
}

/// Whoever else the words of a report name, and when they were said.
TEST(RecipientDoubts, AreWhetherOthersAreMeant) {
    const std::string gone = "unknown-mailbox";
    const std::pair<std::string, std::string> cases[] = {
        // another address behind the words
        {"550 User unknown (c@z.example)", gone + " retry"},
        {"550 c@z.example not found", gone + " retry"},
        {"550 a@x.example not found", gone + " suppress"},
        {"550 User unknown (a@x.example)", gone + " suppress"},
        {"550 User unknown (a@mail.example)", gone + " suppress"},
        {"550 User unknown (c@x.example)", gone + " suppress"},
        {"550 User unknown (b@y.example)", gone + " suppress"},
        {"550 User unknown, ask c@z.example", gone + " suppress"},
        {"550 5.0.0 User unknown (c@z.example)", gone + " retry"},
        {"5.1.0 Unknown address error 550-'User unknown (c@z.example)'", gone + " retry"},
        {"550 5.0.350 Remote server returned an error -> 550 User unknown (c@z.example)",
         gone + " retry"},
        {"550 5.1.1 User unknown: c@z.example", gone + " suppress"},
        // some of several
        {"550 One or more recipients do not exist", gone + " retry"},
        {"550 One or more\n recipients do not exist", gone + " retry"},
        {"550-One or more\n 550 recipients do not exist", gone + " retry"},
        {"after RCPT TO:<a@x.example>:\n 550 One or more recipients do not exist", gone + " retry"},
        {"550 One or more recipients failed (a@x.example: no such user)", gone + " suppress"},
        // after the message was sent
        {"550 User unknown (in reply to end of DATA command)", gone + " retry"},
        {"550 User unknown (in reply to end of\n    DATA command)", gone + " retry"},
        {"550 User unknown: a@x.example (in reply to end of DATA command)", gone + " retry"},
        {"550 User unknown (a@x.example) (in reply to end of DATA command)", gone + " suppress"},
        {"550 <a@x.example>: User unknown (in reply to end of DATA command)", gone + " suppress"},
        {"550 <c@x.example>: User unknown (in reply to end of DATA command)", gone + " retry"},
        {"550 5.1.1 User unknown (in reply to end of DATA command)", gone + " suppress"},
        // hosts
        {"Name service error for name=x.example: Host not found", "unknown-domain suppress"},
        {"Name service error for name=mx.y.example: Host not found", "unknown-domain suppress"},
        {"Name service error for name=z.example: Host not found", "unknown-domain retry"},
        {"dial tcp: lookup z.example on 192.0.2.53:53: no such host", "unknown-domain retry"},
        {"dial tcp: lookup y.example on 192.0.2.53:53: no such host", "unknown-domain suppress"},
        {"getaddrinfo ENOTFOUND mx.z.example", "unknown-domain retry"},
        {"lookup mx.xn--p1ai: no such host", "unknown-domain retry"},
        {"Smart host not found", "unknown-domain retry"},
        {"queryMx ENOTFOUND x.example", "unknown-domain suppress"},
        {"host mx.z.example said: 550 Domain not found", "unknown-domain suppress"},
        {"550 Host unknown, i.e. gone (192.0.2.1)", "unknown-domain suppress"},
        {"550 Host unknown, see https://z.example/help", "unknown-domain suppress"},
    };
    for (const auto& [text, told] : cases) {
        EXPECT_EQ(sentOn("Diagnostic-Code: smtp; " + text), "a@x.example->b@y.example " + told)
            << text;
    }
    // Words in a notice are doubted alike; its next line may be about the next recipient.
    const std::string front =
        "Delivery to this recipient failed:\n\n    a@x.example\n\nDetails of "
        "the failure:\nThe host said: User unknown";
    EXPECT_EQ(advised(notice(front + " (c@z.example)\n")), "a@x.example unknown-mailbox retry");
    EXPECT_EQ(advised(notice(front + "\nc@z.example: mailbox full\n")),
              "a@x.example unknown-mailbox suppress; c@z.example mailbox-full retry");
    // What only the field of a report says is not said by words.
    EXPECT_EQ(sentOn("Status: 5.1.1\nDiagnostic-Code: smtp; 554 failed (in reply to end of DATA)"),
              "a@x.example->b@y.example unknown-mailbox suppress");
}

/// A reply names the sender, or the notice that explains it does.
TEST(RecipientDoubts, AreWhetherTheSenderIsNamed) {
    const auto told = [](const std::string& reply, const std::string& text) {
        return advised("From: MAILER-DAEMON@mx.example\nTo: me@own.example\n" +
                       report(part("text/plain", text) +
                              part("message/delivery-status",
                                   "Final-Recipient: rfc822; a@x.example\nAction: failed\n"
                                   "Diagnostic-Code: smtp; " +
                                       reply + "\n")));
    };
    const std::string far = " has written what follows to us. 550 user unknown";
    EXPECT_EQ(told("me@own.example" + far, "Sorry."), "a@x.example policy fix");
    EXPECT_EQ(told("me@own.example or a@x.example" + far, "Sorry."),
              "a@x.example unknown-mailbox suppress");
    EXPECT_EQ(told("554 failed", "User unknown"), "a@x.example unknown-mailbox suppress");
    EXPECT_EQ(told("554 failed", "User unknown: me@own.example"), "a@x.example policy fix");
    EXPECT_EQ(told("554 failed for me@own.example", "User unknown"), "a@x.example policy fix");
    EXPECT_EQ(told("550 mailbox unavailable <a@x.example>",
                   ">>> MAIL From:<me@own.example>\n<<< 550 mailbox unavailable"),
              "a@x.example unknown-mailbox suppress");
}

/// The dialogue tells whom a reply in the report was about.
TEST(RecipientDoubts, AreWhetherTheSenderWasRefused) {
    const std::string reply = "550 Requested action not taken: mailbox unavailable";
    const std::pair<std::string, const char*> cases[] = {
        {">>> MAIL From:<me@own.example>\n<<< " + reply, "a@x.example policy fix"},
        {">>> RCPT To:<a@x.example>\n<<< " + reply, "a@x.example unknown-mailbox suppress"},
        {"host said: " + reply + " (in reply to\n    MAIL FROM command)", "a@x.example policy fix"},
        {"host said: " + reply +
             " (in\n    reply to RCPT TO command)\n\n<b@x.example>: refused to talk to me: 421 no",
         "a@x.example unknown-mailbox suppress"},
        {"host said: " + reply + " (in reply to RCPT TO command)",
         "a@x.example unknown-mailbox suppress"},
        {">>> MAIL From:<me@own.example>\n<<< 250 ok\n>>> RCPT To:<a@x.example>\n<<< " + reply,
         "a@x.example unknown-mailbox suppress"},
    };
    for (const auto& [dialogue, expected] : cases) {
        EXPECT_EQ(advised(report(part("text/plain", dialogue) +
                                 part("message/delivery-status",
                                      "Final-Recipient: rfc822; a@x.example\nAction: failed\n"
                                      "Diagnostic-Code: smtp; " +
                                          reply + "\n"))),
                  expected)
            << dialogue;
    }
    // Fields beside the recipient's say who sent the message, and no more.
    EXPECT_EQ(advised("From: MAILER-DAEMON@mx.example\nTo: me@own.example\n\nCould not be "
                      "delivered because of\n\n550 5.1.1 User unknown\n\nThe following recipients "
                      "were affected:\n   a@x.example\n\nMore\nSender: <me@own.example>\n"),
              "a@x.example unknown-mailbox suppress");
    // What the text says of a recipient whom only the text names is no reply in a report.
    EXPECT_EQ(advised(notice("<a@x.example>: no such user\n\n>>> MAIL From:<me@own.example>\n<<< " +
                             reply)),
              "a@x.example unknown-mailbox suppress");
}

/// People quote notices when they ask about them.
TEST(RecipientDoubts, AreWhetherAPersonWrites) {
    const std::string quoted = "\n\n<a@x.example>: host said: 550 5.1.1 user unknown\n";
    for (const char* header :
         {"From: b@x.example\nSubject: hello", "From: b@x.example\nSubject: Re: Undelivered Mail",
          "From: b@x.example\nSubject: SV: Undelivered Mail",
          "From: b@x.example\nSubject: WG: Mail delivery failed",
          "From: b@x.example\nSubject: returned mail?",
          "From: owner-devs@lists.example\nList-Id: <devs.lists.example>\nSubject: Mail failure",
          "From: b@x.example\nAuto-Submitted: auto-replied\nSubject: Away",
          "Return-Path: <>\nFrom: b@x.example\nAuto-Submitted: auto-replied\nSubject: Away"}) {
        EXPECT_EQ(advised(header + quoted).find("suppress"), std::string::npos) << header;
    }
    EXPECT_EQ(advised("From: b@x.example\nSubject: Re: yours\n\nMy mail to a@x.example came back, "
                      "user unknown. Do you have a new address?\n"),
              "");
}

TEST(RecipientDoubts, AreAnsweredByACodeWhereOnlyTheSubjectIsThatOfANotice) {
    const std::string header = "From: Ann <b@x.example>\nSubject: Mail delivery failed\n\n";
    EXPECT_EQ(advised(header + "The courier says: recipient unknown.\n\na@x.example\n"),
              "a@x.example unknown-mailbox retry");
    for (const char* code : {"550", "550 5.1.1", "#5.1.1"}) {
        EXPECT_EQ(advised(header + "<a@x.example>: " + code + " user unknown\n"),
                  "a@x.example unknown-mailbox suppress")
            << code;
    }
    EXPECT_EQ(advised(header + "<a@x.example>: user unknown\n\n----- Original message -----\n"
                               "Received: by x.example\nFrom: me@own.example\nTo: a@x.example\n"),
              "a@x.example unknown-mailbox suppress");
}

}  // namespace
}  // namespace bouncecheck
