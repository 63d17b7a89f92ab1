#include <gtest/gtest.h>

#include <string>
#include <utility>

#include <bouncecheck/Limits.h>
#include "recipients/CueSearch.h"
#include "recipients/Notice.h"
#include "recipients/Origin.h"
#include "support/Notices.h"

namespace bouncecheck {
namespace {

/// Everything below `cut` belongs to the message that came back.
TEST(Notice, EndsWhereTheReturnedMessageBegins) {
    const std::string said = "could not be delivered:\n\n<a@x.example>: no such user\n\n";
    const std::string below = "<b@x.example>: no such user\n";
    const std::pair<std::string, bool> cases[] = {
        // words that announce it, as a rule, or with a header behind them
        {"--- Original message follows ---\n\nhello\n\n", true},
        {"======= Returned message follows\nhello\n\n", true},
        {"The original message follows.\n\nFrom: me@own.example\n\n", true},
        {"Kopie der Nachricht:\n\nFrom me@own.example Mon Jan  1\n\n", true},
        {"Originalnachricht:\n\nhallo\n\n", true},
        {"Исходное сообщение:\n\nhallo\n\n", true},
        {"The first 50 lines of your message follow:\n\nhello\n\n", true},
        // drawn with other strokes, and in other words
        {"=== cut ===\nhello\n\n", true},
        {"___ original message ___\n\nhello\n\n", true},
        {"~~~ Mensaje original ~~~\nhola\n\n", true},
        {"----- 元のメール -----\nhello\n\n", true},
        {"*** Your message could not be delivered ***\n\n", false},
        {"--- Cause of the failure ---\n\n", false},
        {"Original message sizes vary.\n\n", false},
        {"A copy of the message is kept.\n\n", false},
        {"Others did not receive a copy of the message:\n\n", false},
        {"The original message follows.\n\nhttps://x.example/\n\n", false},
        // a header without words
        {"Received: by x\nMessage-ID: <1@x>\nSubject: hi\n\n", true},
        {"Received: by x\n\tfor y\nSubject: hi\nTo: c@x.example\n\n", true},
        {"From: me@own.example\nSubject: hi\nDate: today\n\n", false},
        {"Received: by x\nSubject: hi\n\n", false},
        {"Received: by x\n\nSubject: hi\nDate: today\n\n", false},
        // the fields of a part, and of a report
        {"Content-Type: text/plain\nContent-Transfer-Encoding: 7bit\nMIME-Version: 1.0\n\n", false},
        {"Reporting-MTA: dns; x\nReceived-From-MTA: dns; y\nArrival-Date: today\n\n", false},
    };
    for (const auto& [middle, isCut] : cases) {
        EXPECT_EQ(addressesIn(notice(said + middle + below)),
                  isCut ? "a@x.example" : "a@x.example; b@x.example")
            << middle;
    }
    // Nothing has been said yet, so that it cannot be the message that came back.
    EXPECT_EQ(addressesIn(notice("--- Original message follows ---\n" + said)), "a@x.example");
    EXPECT_TRUE(Notice(Entity(notice(said + cases[2].first + below)))
                    .returned()
                    .starts_with("From: me@own.example\r\n\r\n<b@x.example>"));
}

TEST(Notice, IsReadOfThePartsForPeople) {
    const std::string reply = "was not delivered\n\n<a@x.example>: no such user\n";
    const std::string html =
        "<p>was not delivered</p><p>&lt;h@x.example&gt;:&nbsp;no such user</p>";
    const auto parts = [](const std::string& all) {
        return addressesIn(
            "From: MAILER-DAEMON@x.example\nContent-Type: multipart/mixed; "
            "boundary=b\n\n" +
            all + "--b--\n");
    };
    EXPECT_EQ(parts(part("text/html", html)), "h@x.example");
    EXPECT_EQ(parts(part("text/plain", " \n") + part("text/html", html)), "h@x.example");
    EXPECT_EQ(parts(part("text/plain", reply) + part("text/html", html)), "a@x.example");
    EXPECT_EQ(parts(part("text/plain", "was not delivered") + part("text/plain", reply)),
              "a@x.example");
    EXPECT_EQ(parts(part("text/plain", "was not delivered") +
                    part("text/plain\nContent-Disposition: attachment", reply)),
              "");
    EXPECT_EQ(parts(part("text/plain", "was not delivered") + part("text/rfc822-headers", reply)),
              "");
    EXPECT_EQ(addressesIn(notice(reply + "\n-- \nThe team\n<b@x.example>: no such user\n")),
              "a@x.example");
    const std::string far(limits::notice, '.');
    EXPECT_EQ(addressesIn(notice(reply + far + "\n<b@x.example>: no such user\n")), "a@x.example");
    // What is left of an address may be another one.
    const std::string words = "could not be delivered: no such user\r\n";
    const std::string filled = words + std::string(limits::notice - words.size() - 9, '.') + "\r\n";
    EXPECT_EQ(addressesIn(notice(filled + "b@x.com.example\r\n")), "");
    EXPECT_EQ(addressesIn(notice(filled.substr(0, 99) + "\r\nb@x.com\r\n")), "b@x.com");
    EXPECT_EQ(Notice(Entity(notice(far.substr(1) + "é"))).text().find('\xC3'), std::string::npos);
}

/// How a message is stored says nothing of its recipients.
TEST(Notice, IsTheSameWithAnyLineEnds) {
    const std::string message = notice(
        "could not be delivered:\n\n<a@x.example>:\n550 5.1.1 no such user\n\n"
        "b@x.example\nc@x.example\n\n--- Original message ---\n\nTo: d@x.example\n");
    const std::string expected =
        "a@x.example unknown-mailbox suppress; b@x.example unknown-mailbox retry; "
        "c@x.example unknown-mailbox retry";
    for (const char* lineEnd : {"\n", "\r\n", "\r"}) {
        std::string stored;
        for (const char c : message) c == '\n' ? stored += lineEnd : stored += c;
        EXPECT_EQ(advised(stored), expected);
    }
    EXPECT_EQ(
        advised(notice("<p>could not be delivered:</p><p>&lt;a@x.example&gt;:<br>550 5.1.1 no "
                       "such user</p><p>b@x.example<br>c@x.example</p>",
                       "text/html")),
        expected);
}

/// Transcripts of sessions, and who is told what.
TEST(Notice, GivesTheRepliesOfADialogueToTheirRecipients) {
    const std::string a = ">>> RCPT To:<a@x.example>\n";
    const std::string b = ">>> RCPT To:<b@x.example>\n";
    const std::string list = "had permanent fatal errors\n\n<a@x.example>\n<b@x.example>\n\n";
    const std::string data = list + ">>> DATA\n";
    const std::pair<std::string, const char*> cases[] = {
        {a + "<<< 550-5.1.1 No\n<<< 550 5.1.1 such user\n" + b + "<<< 452 4.2.2 Mailbox full\n",
         "a@x.example unknown-mailbox suppress; b@x.example mailbox-full retry"},
        // who was accepted has not failed, unless the message was refused
        {a + "<<< 250 Ok\n" + b + "<<< 550 5.1.1 User unknown\n",
         "b@x.example unknown-mailbox suppress"},
        {a + "<<< 250 Ok\n" + b +
             "<<< 550 5.1.1 User unknown\n>>> DATA\n<<< 554 5.7.1 Spam message\n",
         "a@x.example content fix; b@x.example unknown-mailbox suppress"},
        // commands ahead of their replies
        {a + b + "<<< 550 5.1.1 <a@x.example>... User unknown\n<<< 250 <b@x.example>... Ok\n",
         "a@x.example unknown-mailbox suppress"},
        {data +
             "<<< 550 5.1.1 <a@x.example>... User unknown\n<<< 452 4.2.2 <b@x.example>... Full\n",
         "a@x.example unknown-mailbox suppress; b@x.example mailbox-full retry"},
        {">>> DATA\n<<< 550 5.1.1 <a@x.example>... User unknown\n",
         "a@x.example unknown-mailbox suppress"},
        // to the sender, or to the message: said to all
        {list + ">>> MAIL From:<me@own.example>\n<<< 554 5.7.1 <me@own.example>: spam message\n",
         "a@x.example content fix; b@x.example content fix"},
        {data +
             "<<< 552 5.3.4 Message size exceeds limit\n550 5.1.1 <a@x.example>... User unknown\n",
         "a@x.example unknown-mailbox suppress; b@x.example message-too-large fix"},
        // which stands below another one, and what follows any refusal
        {"had permanent fatal errors\n\n<a@x.example>\n\nhad transient errors\n\n<b@x.example>\n\n"
         "--- Transcript ---\n550 5.1.1 <a@x.example>... User unknown\n"
         "<b@x.example>... Deferred: Connection reset\n",
         "a@x.example unknown-mailbox suppress; b@x.example unreachable retry"},
        {data + "<<< 554 spam message\n554 <a@x.example>... Service unavailable\n",
         "a@x.example content fix; b@x.example content fix"},
        // as other systems mark both sides
        {"--> MAIL From:<me@own.example>\n<-- 250 2.1.0 Ok\n--> RCPT To:<a@x.example>\n<-- 250 Ok\n"
         "--> RCPT To:<b@x.example>\n<-- 550 5.1.1 unknown user\n--> QUIT\n",
         "b@x.example unknown-mailbox suppress"},
        {"Tue 2024-05-14 11:13:02: [3:1] --> RCPT To:<a@x.example>\nTue 2024-05-14 11:13:03: [3:1] "
         "<-- 452 4.2.2 mailbox full\n",
         "a@x.example mailbox-full retry"},
        {"C: RCPT TO:<a@x.example>\nS: 250 Ok\nC: RCPT TO:<b@x.example>\nS: 452 4.2.2 Full\n",
         "b@x.example mailbox-full retry"},
        // a person's quotation marks are no dialogue
        {"could not be delivered:\n>>> I wrote to c@y.example\n<a@x.example>: user unknown\n",
         "a@x.example unknown-mailbox suppress"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(advised(notice("--- Transcript of session follows ---\n" + text)), expected)
            << text;
    }
}

TEST(Notice, KnowsTroubleFromSuccess) {
    EXPECT_TRUE(cuesIn("Не доставлено").haveTrouble());
    EXPECT_TRUE(cuesIn("письмо не было доставлено").haveTrouble());
    EXPECT_TRUE(cuesIn("Échec de la remise").haveTrouble());
    EXPECT_FALSE(cuesIn("Ваше сообщение доставлено").haveTrouble());
    EXPECT_FALSE(cuesIn("Сообщение было доставлено, адрес уже существует").haveTrouble());
}

TEST(Origin, IsWhatTheHeaderSays) {
    const std::pair<const char*, Author> cases[] = {
        {"From: MAILER-DAEMON@x.example", Author::system},
        {"From: Postmaster <PostMaster@x.example>\nSubject: Re: your mail", Author::system},
        {"From: <>", Author::system},
        {"Subject: no sender", Author::system},
        {"From: b@x.example\nReturn-Path: <>", Author::system},
        {"From: b@x.example\nX-Failed-Recipients: a@x.example", Author::system},
        {"From: b@x.example\nContent-Type: multipart/report; boundary=b", Author::system},
        {"From: b@x.example\nSubject: Undeliverable: hello", Author::perhapsSystem},
        {"From: b@x.example\nSubject: =?utf-8?Q?Unzustellbar?=", Author::perhapsSystem},
        {"From: b@x.example\nSubject: hello", Author::person},
        {"From: b@x.example\nReturn-Path: <b@x.example>\nAuto-Submitted: auto-replied",
         Author::person},
        {"From: b@x.example\nSubject: Re: Undeliverable: hello", Author::person},
        {"From: b@x.example\nSubject: FWD : Undeliverable: hello", Author::person},
        {"From: b@x.example\nSubject: VB: Undeliverable: hello", Author::person},
        {"From: b@x.example\nSubject: [desk] [EXT] Aw: Undeliverable: hello", Author::person},
        {"From: b@x.example\nSubject: [desk] Undeliverable: hello", Author::perhapsSystem},
        {"From: b@x.example\nSubject: Re[2]: Undeliverable: hello", Author::person},
        {"From: b@x.example\nSubject: 转发：Undeliverable: hello", Author::person},
        {"From: system@x.example\nAuto-Submitted: auto-replied", Author::perhapsSystem},
        {"From: info@mailer-daemon.example", Author::person},
    };
    for (const auto& [header, author] : cases) {
        EXPECT_EQ(authorOf(Entity(std::string(header) + "\n\ntext")), author) << header;
    }
}

}  // namespace
}  // namespace bouncecheck
