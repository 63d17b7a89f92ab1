#include "recipients/Recipients.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include <bouncecheck/Limits.h>
#include "support/Notices.h"

namespace bouncecheck {
namespace {

TEST(Recipients, ReadsTheGroupsOfADeliveryStatus) {
    const std::pair<const char*, const char*> cases[] = {
        {"Final-Recipient: rfc822;a@x\nAction: failed", "a@x failed report"},
        {"Original-Recipient: rfc822; <a@x.example>\nFinal-Recipient: RFC822;b@x.example\n"
         "Action: Delayed (for now)",
         "a@x.example->b@x.example delayed report"},
        // xtext, and the form of international addresses
        {"Original-Recipient: rfc822;a+2Bb@x.example\nFinal-Recipient: rfc822;a+b@x.example\n"
         "Action: delivered",
         "a+b@x.example delivered report"},
        {"Final-Recipient: utf-8;\\x{FC}@x.example\nAction: relayed",
         "\xC3\xBC@x.example relayed report"},
        // no blank line between recipients
        {"Final-Recipient: x;a@x\nStatus: 5.0.0\nFinal-Recipient: x;b@x\nStatus: 2.0.0",
         "a@x failed report; b@x delivered report"},
        // a blank line between fields
        {"Final-Recipient: x;a@x\n\nAction: failed\n\n\nStatus: 5.0.0\n\n"
         "Final-Recipient: x;b@x\n\nAction: delayed",
         "a@x failed report; b@x delayed report"},
        // the address behind the other fields
        {"Action: failed\nFinal-Recipient: x;a@x\n\nAction: delayed\nFinal-Recipient: b@x",
         "a@x failed report; b@x delayed report"},
        {"Final-Recipient: x;a@x\nAction: failed\nAction: delayed", "a@x failed report"},
        {"Final-Recipient: x;a@x\nAction: delivered\n\nFinal-Recipient: x;A@X\nAction: failed",
         "a@x failed report"},
        {"Final-Recipient: x;a@x\nAction: zzz\nStatus: 4.0.0\nWill-Retry-Until: today",
         "a@x delayed report"},
        {"Final-Recipient: rfc822; |/usr/bin/vacation\nAction: failed", ""},
        {"Reporting-MTA: dns;x", ""},
    };
    for (const auto& [status, expected] : cases) {
        EXPECT_EQ(named(statusReport(status)), expected) << status;
    }
}

TEST(Recipients, KeepsWhatAReportSays) {
    const std::vector<Recipient> all = recipientsOf(
        Entity(statusReport("Final-Recipient: rfc822;a@x\nAction: failed\nStatus: 5.1.1 (gone)\n"
                            "Remote-MTA: dns; mx.x.example\nDiagnostic-Code: smtp; 550\n  no\n"
                            "Last-Attempt-Date: today\nWill-Retry-Until: tomorrow")));
    ASSERT_EQ(all.size(), 1U);
    EXPECT_EQ(all[0].status, "5.1.1");
    EXPECT_EQ(all[0].replyCode, "550");
    EXPECT_EQ(all[0].diagnostic, "550 no");
    EXPECT_EQ(all[0].remoteMta, "mx.x.example");
    EXPECT_EQ(all[0].lastAttempt, "today");
    EXPECT_EQ(all[0].willRetryUntil, "tomorrow");
}

TEST(Recipients, NamesTheHostThatReplied) {
    const std::pair<const char*, const char*> cases[] = {
        {"dns; mx.x.example (192.0.2.1, the server for the domain x.example.)", "mx.x.example"},
        {"dns; (192.0.2.1, the server for the domain x.example.)", "192.0.2.1"},
        {"dns;mx.x.example. (TCP|192.0.2.1|25)", "mx.x.example"},
        {"dns; mx.x.example [192.0.2.1]", "mx.x.example"},
        {"dns; [192.0.2.1]", "[192.0.2.1]"},
        {"dns; ::1", "::1"},
        {"x-local; the post room", "the post room"},
        {"dns;", ""},
    };
    for (const auto& [value, host] : cases) {
        const std::vector<Recipient> all = recipientsOf(Entity(statusReport(
            "Final-Recipient: rfc822;a@x\nAction: failed\nRemote-MTA: " + std::string(value))));
        ASSERT_EQ(all.size(), 1U);
        EXPECT_EQ(all[0].remoteMta, host) << value;
    }
}

TEST(Recipients, ReadsComplaintsAndReceipts) {
    const std::string kind = "message/feedback-report";
    const std::string spam = "Feedback-Type: abuse\n";
    const std::string toA = part("message/rfc822", "To: a@x.example\n");
    const std::pair<std::string, const char*> cases[] = {
        {part(kind, spam + "Original-Rcpt-To: <a@x.example>"), "a@x.example complained report"},
        {part(kind, spam + "Removal-Recipient: a@x.example\nOriginal-Rcpt-To: b@x.example"),
         "a@x.example complained report; b@x.example complained report"},
        {part(kind, "Feedback-Type: Opt-Out\nRemoval-Recipient: a@x.example"),
         "a@x.example complained report"},
        // neither is a complaint of the recipient
        {part(kind, "Feedback-Type: not-spam\nOriginal-Rcpt-To: a@x.example"),
         "a@x.example unknown report"},
        {part(kind, "Feedback-Type: auth-failure\nOriginal-Rcpt-To: a@x.example"),
         "a@x.example unknown report"},
        // the recipient is in the message, where one alone is
        {part(kind, spam) + toA, "a@x.example complained returned"},
        {part(kind, spam + "Original-Rcpt-To: redacted") + toA, "a@x.example complained returned"},
        {part(kind, spam) + part("message/rfc822", "To: a@x.example, b@x.example\n"), ""},
        // the words of a complaint say nothing of a delivery
        {part("text/plain", "<c@x.example>: user unknown") + part(kind, spam), ""},
        {part("message/disposition-notification",
              "Original-Recipient: rfc822;a@x.example\nFinal-Recipient: rfc822;b@x.example\n"
              "Disposition: m; displayed"),
         "a@x.example->b@x.example displayed report"},
        {part("message/disposition-notification",
              "Original-Recipient: rfc822;a@x.example\nFinal-Recipient: rfc822;A@x.example"),
         "a@x.example displayed report"},
    };
    for (const auto& [parts, expected] : cases) EXPECT_EQ(named(report(parts)), expected) << parts;
    EXPECT_EQ(advised(report(cases[0].first)), "a@x.example  unsubscribe");
    EXPECT_EQ(advised(report(cases[3].first)), "a@x.example  none");
}

TEST(Recipients, ReadsComplaintsWithoutReports) {
    const std::string mixed = "Content-Type: multipart/mixed; boundary=b\n\n";
    const std::string subject = "Subject: complaint about message from 192.0.2.1\n" + mixed;
    const std::string noted = part("message/rfc822", "X-HmXmrOriginalRecipient: a@x.example\n");
    EXPECT_EQ(named(subject + noted), "a@x.example complained returned");
    EXPECT_EQ(named("Subject: your message\n" + mixed + noted), "");
    EXPECT_EQ(named(subject + part("message/rfc822", "To: a@x.example\n")), "");
}

TEST(Recipients, ReadsTheHeader) {
    EXPECT_EQ(named("X-Failed-Recipients: a@x.example,\n  <b@x.example>\n"
                    "x-failed-recipients: nobody, root (Cron Daemon), c@x.example\n\ntext"),
              "a@x.example failed header; b@x.example failed header; c@x.example failed header");
    EXPECT_EQ(named("From: daemon@x.example\nSubject: Delivery failure (a@x.example)\n\nSorry."),
              "a@x.example failed header");
}

/// Lines as mail systems write them, and whom they name.
TEST(Recipients, KnowsTheShapesOfNotices) {
    const std::pair<const char*, const char*> cases[] = {
        // alone on a line, in brackets, in a list
        {"Delivery to the following recipients failed:\n\n  a@x.example\n  <b@x.example>\n\nBye.",
         "a@x.example; b@x.example"},
        {"could not be delivered to:\n * a@x.example\n 2. b@x.example\n",
         "a@x.example; b@x.example"},
        {"could not be delivered to\na@x.example, b@x.example;\n", "a@x.example; b@x.example"},
        {"Delivery has failed:\n\na@x.example<mailto:a@x.example>\nThe box is gone.",
         "a@x.example"},
        {"The following addresses were unknown:\n\nSMTP <a@x.example>\nrfc822;b@x.example\n",
         "a@x.example; b@x.example"},
        // behind a name
        {"could not be delivered to:\n\nAnn Ay <a@x.example>\n  No such user\n\nBob <b@x.example>\n"
         "  Mailbox is full\n\nRegards,\nCleo Cee <c@x.example>\n",
         "a@x.example; b@x.example"},
        {"could not be delivered to a@x.example.\n\nRegards,\nCleo Cee <c@x.example>\n",
         "a@x.example"},
        {"The following addresses failed:\n\n> a@x.example\n> b@x.example\n\n> c@x.example said\n",
         "a@x.example; b@x.example"},
        {"could not be delivered to a@x.example.\n\nAnn wrote:\n\n> c@x.example\n", "a@x.example"},
        // in front of what is said of it
        {"<a@x.example>:\nSorry, no mailbox here by that name. (#5.1.1)\n\n"
         "<b@x.example>:\n192.0.2.1 does not like recipient.\n",
         "a@x.example; b@x.example"},
        {"<a@x.example>: host mx.x.example[192.0.2.1] said: 550 5.1.1\n"
         "    <a@x.example>: Recipient address rejected (in reply to RCPT TO command)\n",
         "a@x.example"},
        {"a@x.example: 550 5.2.2 Mailbox Full\nb@x.example: 550 5.1.1 User unknown\n",
         "a@x.example; b@x.example"},
        {"The following recipient(s) could not be reached:\n\n"
         "      a@x.example on 2/3/2004 10:20 AM\n            The e-mail account is not there.\n",
         "a@x.example"},
        // sent on to another address
        {"The following address(es) failed:\n\n  a@x.example\n    (generated from c@x.example)\n"
         "    SMTP error from remote mail server after RCPT TO:<b@y.example>:\n    550 no\n",
         "a@x.example->b@y.example"},
        {"Your message cannot be delivered:\n\n  Recipient address: b@y.example\n"
         "  Original address: a@x.example\n  Reason: Over quota\n",
         "a@x.example->b@y.example"},
        {"had permanent fatal errors\nb@y.example\n    (reason: 550 no)\n"
         "    (expanded from: <a@x.example>)\n",
         "a@x.example->b@y.example"},
        // behind a label
        {"Failed Recipient: a@x.example\nReason: Remote host said: 550 no such user\n",
         "a@x.example"},
        {"Message details:\n  MAIL FROM: me@own.example\n  RCPT TO: a@x.example\n", "a@x.example"},
        {"メールは受信されませんでした。\n\n送信先: a@x.example\n", "a@x.example"},
        {"메일을 전달하지 못했습니다.\n받는 사람: a@x.example\n", "a@x.example"},
        {"Your mail was blocked.\nRecipient of the message: a@x.example\n", "a@x.example"},
        {"a@x.example 님께 보내신 메일이 전송되지 못하였습니다.\n", "a@x.example"},
        {"Η παράδοση στους ακόλουθους παραλήπτες απέτυχε:\n\na@x.example\n", "a@x.example"},
        {"收件人：a@x.example\n退信原因：不存在\n", "a@x.example"},
        {"Mesajınız iletilemedi.\n\nAlıcı: a@x.example\nGönderen: b@x.example\n", "a@x.example"},
        {"An email you addressed to email address :\n-- a@x.example\n\nIt was no good.\n",
         "a@x.example"},
        {"ไม่สามารถส่งข้อความของคุณได้\n\nผู้รับ: a@x.example\n", "a@x.example"},
        // a dialogue
        {"   ----- Transcript of session follows -----\n>>> RCPT To:<a@x.example>\n"
         "<<< 550 5.1.1 unknown\n550 <a@x.example>... User unknown\n"
         "554 5.1.2 <b@x.example>... Host unknown\n",
         "a@x.example; b@x.example"},
        {">>> MAIL FROM:<me@own.example>\n<<< 550 go away\n", ""},
        {"550 5.7.1 <me@own.example>... Sender rejected\n", ""},
        // a sentence
        {"Your message wasn't delivered to a@x.example because the address\ncouldn't be found.",
         "a@x.example"},
        {"User's mailbox is full: <a@x.example>\nUnable to deliver mail.", "a@x.example"},
        {"お客様のメールをkijitora@x.exampleに配信できませんでした。", "kijitora@x.example"},
        {"Votre message n'est pas parvenu à a@x.example.", "a@x.example"},
        {"Le message à destination de a@x.example n'a pas pu être remis.", "a@x.example"},
        {"Le message de b@x.example n'a pas pu être remis à a@x.example.", "a@x.example"},
        {"Message <1.2@mx.own.example> to a@x.example was not delivered.", "a@x.example"},
        {"Ditt meddelande levererades inte till a@x.example.", "a@x.example"},
        {"Your request to the a@x.example mailing list\n\n    Posting of your message\n\n"
         "has been rejected by the list moderator.\n",
         "a@x.example"},
        {"Votre message pour la liste a@x.example a été rejeté.", "a@x.example"},
        // nobody: people who help, senders, links, the message's own words
        {"could not be delivered. For assistance, contact help@x.example\n", ""},
        {"could not be delivered\n\nPlease send questions to\n  help@x.example\n", ""},
        {"could not be delivered. Please send your request to the staff, help@x.example\n", ""},
        {"could not be delivered.\n\nYou may mail your request to the helpdesk: help@x.example\n",
         ""},
        {"could not be delivered: see https://x.example/?u=a@x.example\n", ""},
        {"could not be delivered\n\n--- Below this line is a copy of the message.\n\n"
         "Received: by x\nSubject: a\n\na@x.example\n",
         ""},
        {"a message from b@x.example could not be delivered to a@x.example", "a@x.example"},
        {"could not be delivered to postmaster@mx.example\n", ""},
        {"Your ticket is open. If your mail to a@x.example was not delivered, please call.\n", ""},
        {"You are not authorized to write to the list from your\nme@own.example account.\n"
         "Please write to the list\nowners: b@x.example\n",
         ""},
        // to whom the notice was sent, where it says so
        {"could not be delivered to:\n\n<me@own.example>: host said: 550 unknown\n",
         "me@own.example"},
    };
    for (const auto& [text, expected] : cases) {
        std::string found;
        for (const Recipient& recipient : recipientsOf(Entity(notice(text)))) {
            if (recipient.source != RecipientSource::text) continue;
            found += (found.empty() ? "" : "; ") + recipient.address;
            if (!recipient.finalAddress.empty()) found += "->" + recipient.finalAddress;
        }
        EXPECT_EQ(found, expected) << text;
    }
}

TEST(Recipients, AttachesWhatIsSaidToItsRecipient) {
    const std::vector<Recipient> all = recipientsOf(Entity(
        notice("<a@x.example>:\nRemote host said: 550 5.1.1 no such user\n\n"
               "<b@x.example>:\nRemote host said: 452 4.2.2 mailbox is full\nGiving up.\n")));
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].diagnostic, "Remote host said: 550 5.1.1 no such user");
    EXPECT_EQ(all[0].status, "5.1.1");
    EXPECT_EQ(all[1].diagnostic, "Remote host said: 452 4.2.2 mailbox is full\nGiving up.");
    EXPECT_EQ(all[1].replyCode, "452");
}

/// A notice in a language that no cue is in names those whose replies a mail system quotes.
TEST(Recipients, KnowsARefusalInAnyLanguage) {
    const std::string quoted[] = {
        "<a@x.example>: host mx.x.example[192.0.2.1] said: 550 5.2.0 nihil (in reply to RCPT TO)",
        "  a@x.example\n    SMTP error from remote server: 550 5.2.0 nihil",
        "<a@x.example>:\nRemote host said: 450 4.2.0 nihil\n",
        ">>> RCPT To:<a@x.example>\n<<< 550 5.2.0 nihil\n",
        "'a@x.example' 550 5.2.0 nihil\n",
        "a@x.example => 550 5.2.0 nihil\n",
        "<a@x.example>:\nNihil (#5.4.4)\n",
    };
    const std::string greeting = "\n\nLorem ipsum dolor sit amet.\n\n";
    for (const std::string& reply : quoted) {
        const std::string text = "\nSubject: lorem" + greeting + reply;
        EXPECT_EQ(named("From: MAILER-DAEMON@y.example" + text), "a@x.example failed text") << text;
        EXPECT_EQ(named("From: b@y.example\nIn-Reply-To: <1@own.example>" + text), "") << text;
    }
    for (const char* other :
         {"  a@x.example\n", "a@x.example\n550 euro dolor\n", "a@x.example 450 12 34"}) {
        EXPECT_EQ(named("From: postmaster@y.example\nSubject: 550" + greeting + other), "")
            << other;
    }
}

/// Where the lines about a recipient have no code, those that gave the reason are shown.
TEST(Recipients, QuotesWhatGaveTheReason) {
    struct Case {
        std::string text;
        std::string diagnostic;
        std::string codes;
    };
    const std::string longLine(5'000, 'x');
    const Case cases[] = {
        {"There was an error delivering your mail to <a@x.example>.\n\n"
         "mx.x.example did not like our DATA:\n  550 5.7.1 DMARC policy of reject\n\nHeaders "
         "follow.\n",
         "mx.x.example did not like our DATA:\n550 5.7.1 DMARC policy of reject", "550 5.7.1"},
        {"Recipient: <a@x.example>\nSize: 222\n\nError:\n  552 5.2.2 no\n", "Error:\n552 5.2.2 no",
         "552 5.2.2"},
        {"(552 5.2.2) mailbox\nis full\n\nRecipient: <a@x.example>\nSize: 222\n",
         "(552 5.2.2) mailbox\nis full", "552 5.2.2"},
        {"Delivery to <a@x.example> failed: 550 5.0.0 Error\n\nIts mailbox is full.\n",
         "Delivery to <a@x.example> failed: 550 5.0.0 Error", "550 5.0.0"},
        {"Delivery to <a@x.example> failed.\n\nSee\n" + longLine + "\nmailbox is full " + longLine,
         "mailbox is full " + longLine.substr(0, 1'023), " "},
        {"Delivery to <a@x.example> failed.\n\n" + longLine + "é, mailbox is full\n",
         longLine.substr(0, 1'020) + "é, mailbox is full", " "},
    };
    for (const Case& one : cases) {
        const std::vector<Recipient> all = recipientsOf(Entity(notice(one.text)));
        ASSERT_EQ(all.size(), 1U) << one.text;
        EXPECT_EQ(all[0].diagnostic, one.diagnostic);
        EXPECT_EQ(all[0].replyCode + " " + all[0].status, one.codes) << one.text;
    }
}

TEST(Recipients, TellsDelaysFromFailures) {
    EXPECT_EQ(named(notice("The message has not yet been delivered to\n\n  a@x.example\n")),
              "a@x.example delayed text");
    EXPECT_EQ(named(notice("Il messaggio non è stato ancora consegnato a\n\n  a@x.example\n")),
              "a@x.example delayed text");
    EXPECT_EQ(named(notice("メールがまだ配信されていません。\n\n  a@x.example\n")),
              "a@x.example delayed text");
    EXPECT_EQ(named(notice("The message has not been delivered yet to:\n\n> a@x.example\n")),
              "a@x.example delayed text");
    EXPECT_EQ(named(notice("Delivery has been delayed.\n\n<a@x.example>: 550 5.1.1 no\n")),
              "a@x.example failed text");
}

TEST(Recipients, FallsBackOnTheReturnedMessage) {
    const auto returned = [](const std::string& header) {
        return named(
            "From: MAILER-DAEMON@x.example\nTo: me@own.example\nSubject: failure notice\n"
            "Content-Type: multipart/mixed; boundary=b\n\n" +
            part("text/plain", "Your message was not delivered.") +
            part("message/rfc822", header + "\nDear a@y.example\n") + "--b--\n");
    };
    EXPECT_EQ(returned("To: a@x.example\n"), "a@x.example failed returned");
    EXPECT_EQ(returned("To: a@x.example, b@x.example\n"), "");
    EXPECT_EQ(returned("To: a@x.example\nCc: b@x.example\n"), "");
    EXPECT_EQ(returned("Received: by mx for <a@x.example>; today\nSubject: x\n"),
              "a@x.example failed returned");
    EXPECT_EQ(named(notice("was not delivered\n\n----- Original message -----\n\n"
                           "Message-ID: <1@x>\nTo: a@x.example\n")),
              "a@x.example failed returned");
}

TEST(Recipients, ReadsPartsWhoseBoundaryNeverComes) {
    EXPECT_EQ(named("From: MAILER-DAEMON@x.example\nContent-Type: multipart/report; boundary=b\n\n"
                    "--other\nContent-Type: text/plain\nContent-Description: Notice\n"
                    "Content-Transfer-Encoding: 7bit\n\nwas not delivered\n\n--other\n"
                    "Content-Type: message/delivery-status\n\nReporting-MTA: dns; x\n\n"
                    "Final-Recipient: rfc822; a@x.example\nAction: delayed\n"),
              "a@x.example delayed report");
}

TEST(Recipients, NamesNobodyInOrdinaryMail) {
    const std::string letters[] = {
        "From: b@x.example\nSubject: lunch\n\nWrite to\n\n  a@x.example\n\nor call.",
        "From: b@x.example\nSubject: Fwd: Undelivered Mail\n\n<a@x.example>: 550 unknown user",
        "From: b@x.example\nSubject: [talk] Re: lunch\n\n<a@x.example>: 550 unknown user",
        "From: b@x.example\nList-Id: <talk.x.example>\n\n<a@x.example>: 550 unknown user",
        "From: b@x.example\nSubject: the list\nContent-Type: multipart/mixed; boundary=b\n\n" +
            part("text/plain", "As you asked.") +
            part("message/delivery-status", "Final-Recipient: rfc822; a@x.example\n") + "--b--\n",
        "From: postmaster@x.example\nSubject: hours\n\nWe answer at\n\n  a@x.example\n",
        "From: b@x.example\nAuto-Submitted: auto-replied\n\nAway. Please contact a@x.example.",
        "From: b@x.example\nSubject: nicht zugestellt\n\nNicht zugestellt. Fragen an a@x.example.",
    };
    for (const std::string& letter : letters) EXPECT_EQ(named(letter), "") << letter;
}

TEST(Recipients, KeepsWithinItsLimits) {
    std::string status;
    std::string addresses = "X-Failed-Recipients: z@x";
    for (std::size_t i = 0; i < limits::recipients + 5; ++i) {
        const std::string address = std::to_string(i) + "@x.example";
        status += "Final-Recipient: x;" + address + "\n\n";
        addresses += "," + address;
    }
    EXPECT_EQ(recipientsOf(Entity(statusReport(status))).size(), limits::recipients);
    EXPECT_EQ(recipientsOf(Entity(addresses + "\n\n")).size(), limits::recipients);
    const std::string list = "(" + std::string(limits::fieldValue - 16, 'x') + ") a@x, b@y.example";
    EXPECT_EQ(named("X-Failed-Recipients: " + list + "\n\n"), "a@x failed header");
    // What is left of an address behind so many blanks would be another one.
    const std::string cut = std::string(limits::fieldValue - 10, ' ') + "a@x.example.org";
    EXPECT_EQ(named(statusReport("Action: failed\nFinal-Recipient:" + cut)), "");
    const std::string back =
        "was not delivered\n\n----- Original message -----\n\nMessage-ID: <1@x>\n";
    EXPECT_EQ(named("From: MAILER-DAEMON@y.example\nSubject: failure notice\n" +
                    report(part("text/plain", "was not delivered") +
                           part("message/rfc822", "To:" + cut + "\n"))),
              "");
    // Bounces inside bounces are read once.
    const std::string inner = "<a@x.example>: 550 user unknown\n";
    const std::string carrier = back +
                                "Return-Path: <>\nFrom: MAILER-DAEMON@y.example\nTo: b@y.example\n"
                                "Subject: Returned mail\n\n";
    EXPECT_EQ(named(notice(carrier + inner)), "a@x.example failed text");
    EXPECT_EQ(named(notice(carrier + carrier + inner)), "b@y.example failed returned");
}

/// Mail is cut by quotas and on the way. What is left of an address may not be one that somebody
/// else has, so it is at least never put together from what does not belong to it.
TEST(Recipients, OfEveryPrefixStandInIt) {
    const std::string messages[] = {
        statusReport("Original-Recipient: rfc822; <a@x.example>\nFinal-Recipient: b@x.example\n"
                     "Action: failed\nDiagnostic-Code: smtp; 550 <c@x.example>... No\n"),
        report(part("message/feedback-report", "Feedback-Type: abuse\nRemoval-Recipient: <a@x>\n") +
               part("message/rfc822", "Received: for <a@x.example>;\nTo: \"b c\" <d@x.example>")),
        notice(
            "could not be delivered to:\n<a@x.example>: RCPT TO:<b@y.example>:\n\"q r\"@x.example"
            "\n>>> RCPT TO:<c@x.example>\n<<< 550\nü@x.example«\n--- Original message ---\n"
            "Received: for <d@x.example>;\nTo: e@x.example\n"),
        notice("<p>was not delivered to &lt;a@x.example&gt; or <a href='mailto:b@x.example'>b</a>",
               "text/html; charset=utf-8"),
    };
    const std::vector<VerpPattern> verp = {*VerpPattern::parse("{local}@{domain}")};
    for (const std::string& message : messages) {
        for (std::size_t size = 0; size <= message.size(); ++size) {
            const std::string prefix = message.substr(0, size);
            for (const Recipient& recipient : recipientsOf(Entity(prefix), verp)) {
                EXPECT_NE(prefix.find(recipient.address), std::string::npos) << prefix;
                EXPECT_NE(prefix.find(recipient.finalAddress), std::string::npos) << prefix;
                EXPECT_EQ(recipient.address.find_first_of("\r\n<>"), std::string::npos);
            }
            recipientsOf(Entity(message.substr(size)), verp);
        }
    }
}

}  // namespace
}  // namespace bouncecheck
