#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "support/Notices.h"

namespace bouncecheck {
namespace {

/// Whom a notice is about, beside everybody else whom it mentions.
TEST(Advice, IsNotAboutBystanders) {
    const std::string header =
        "From: Helpdesk <help@mx.example>\nReply-To: desk@mx.example\nTo: me@own.example\n"
        "Subject: Undeliverable mail\n\ncould not be delivered:\n\n";
    const std::pair<std::string, const char*> cases[] = {
        {"help@mx.example\nDesk@mx.example\na@x.example\n", "a@x.example"},
        {"mailer-daemon@x.example\nnoreply@x.example\na@x.example\n", "a@x.example"},
        // the sender's own roles, and those of others
        {"postmaster@mx.example\nabuse@mail.mx.example\npostmaster@x.example\n",
         "postmaster@x.example"},
        // to whom the notice was sent, unless it says that the address failed
        {"me@own.example\na@x.example\n", "a@x.example"},
        {"<me@own.example>: user unknown\n\n<a@x.example>: user unknown\n",
         "me@own.example; a@x.example"},
        // people who help
        {"a@x.example\n\nFor assistance, contact\n  c@x.example\n", "a@x.example"},
        {"For assistance, contact\nc@x.example: our desk\n\na@x.example\n", "a@x.example"},
        {"It did not reach a@x.example. Please write to c@x.example.\n", "a@x.example"},
        {"a@x.example\nover quota\n\nAny questions should go to the owner\nat:\n\nc@x.example\n",
         "a@x.example"},
        {"<a@x.example>: gone. Please write to c@x.example instead.\n", "a@x.example"},
        // senders
        {"Sender: c@x.example\nFrom: d@x.example\nRecipient: a@x.example\nCc: e@x.example\n",
         "a@x.example"},
        {"550 5.7.1 <c@x.example>: mail from this address is refused\n<a@x.example>: no\n",
         "a@x.example"},
        {"A message sent by\n\n  <me@own.example>\n\nfailed. The following address failed:\n\n"
         "  a@x.example\n    no such user\n",
         "a@x.example"},
        {"<a@x.example>:\n\n550 Manually blocked sender: me@own.example\n", "a@x.example"},
        {"Your message to a@x.example was refused:\n550 Blocked. Write c@x.example\n",
         "a@x.example"},
        // below a rule, where the returned message may be
        {"  a@x.example    mailbox full\n\n________\nThe new list:\n\nc@x.example\n",
         "a@x.example"},
        {"a@x.example: full\n--------\nIt did not reach either\n\nb@x.example\n",
         "a@x.example; b@x.example"},
        {"----\na@x.example\nover quota\n----\nb@x.example\nno such user\n----\nc@x.example\n",
         "a@x.example; b@x.example"},
        // people who help, or who write the notice
        {"a@x.example\nover quota. For help please contact:\n\nc@x.example\n", "a@x.example"},
        {"Your mail to a@x.example could not be delivered.\n\nThe Mail Team\n\nc@x.example\n",
         "a@x.example"},
        // addressees count where no better one is
        {"To: a@x.example\nSent: today\n", "a@x.example"},
        {"To: c@x.example\n\n<a@x.example>: user unknown\n", "a@x.example"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(addressesIn(header + text), expected) << text;
    // The list that refused the mail of a member has not failed.
    for (const char* field :
         {"List-Post: <mailto:list@lists.example>", "List-Owner: <mailto:list@lists.example>",
          "List-Unsubscribe: <https://lists.example/>, <mailto:list@lists.example>",
          "List-Id: The list <list.lists.example>", "Sender: list@lists.example",
          "Return-Path: <list@lists.example>"}) {
        EXPECT_EQ(
            addressesIn(header + "list@lists.example\na@x.example\n\n--- Original message ---\n" +
                        field + "\nSubject: x\n"),
            "a@x.example")
            << field;
    }
}

/// Suppressing an address that works is worse than keeping one that does not.
TEST(Advice, IsToSuppressOnlyForWhatIsSaidOfTheRecipient) {
    const std::string gone = "550 5.1.1 user unknown";
    const std::pair<std::string, const char*> cases[] = {
        {"<a@x.example>: " + gone, "a@x.example unknown-mailbox suppress"},
        {"Your mail to a@x.example was not delivered. The server said:\n\n" + gone,
         "a@x.example unknown-mailbox suppress"},
        // a reply that words without a code announce
        {"failed permanently:\n\n  a@x.example\n\nIt was rejected by the server of x.example.\n\n"
         "The error was:\n" +
             gone,
         "a@x.example unknown-mailbox suppress"},
        {"failed permanently:\n\n  a@x.example\n\n554 5.7.1 rejected by policy\n\nIf the mailbox "
         "is "
         "not there, it says: " +
             gone,
         "a@x.example policy fix"},
        // words that introduce the reply
        {"failed permanently:\n\n  a@x.example\n\nIt was rejected by the server for the recipient "
         "domain x.example.\n\nThe error was:\n550 user a not found\n\nBye.",
         "a@x.example unknown-mailbox suppress"},
        {"***\n\n  a@x.example\n  550 Casilla 'a' inexistente\n",
         "a@x.example unknown-mailbox suppress"},
        {"As to your message to\n\n  a@x.example\n\nit failed for this reason:\n\n  " + gone,
         "a@x.example unknown-mailbox suppress"},
        {"not delivered:\n\n  a@x.example\n\nThe error was:\n\n    b@x.example: " + gone,
         "a@x.example other retry; b@x.example unknown-mailbox suppress"},
        // a paragraph, or a heading, in front of the address
        {"Nobody has this address. It could not be delivered.\n\n  a@x.example\n\n" + gone,
         "a@x.example unknown-mailbox suppress"},
        {"It could not be delivered: user unknown.\n\na@x.example\n",
         "a@x.example unknown-mailbox suppress"},
        {"It could not be delivered: user unknown.\nOur desk:\n\na@x.example\n",
         "a@x.example unknown-mailbox retry"},
        {"These addresses were not found here: user unknown (please check\nthem):\n\n"
         "SMTP <a@x.example>\n",
         "a@x.example unknown-mailbox suppress"},
        {"Your user is unknown. Please write\nto:\n\n<a@x.example>\n", ""},
        {"Unknown user b. Alternate addresses:\n\n<a@x.example>\n", ""},
        // a delay, and why
        {"Your mail to a@x.example is still being retried.\n\n421 4.7.0 unusual rate of mail",
         "a@x.example rate-limit retry"},
        // the sender
        {"<a@x.example>:\nafter RCPT TO:<a@x.example>:\n550 <me@own.example> unknown account",
         "a@x.example policy fix"},
        // the sender's domain
        {"<a@x.example>: 517 Domain does not exist: own.example", "a@x.example policy fix"},
        {">>> RCPT TO:<a@x.example>\n<<< 517 Domain does not exist: own.example\n",
         "a@x.example policy fix"},
        {"<a@x.example>: 517 Domain does not exist:\n  own.example", "a@x.example policy fix"},
        {"<a@x.example>: 550 No such domain: x.example, said mx.own.example",
         "a@x.example unknown-domain suppress"},
        // a code without words, and a sentence that goes on
        {"It was not delivered to a@x.example.\n\nIt says: 550 5.1.10.",
         "a@x.example unknown-domain suppress"},
        {"There was a temporary problem with a@x.example, not delivered yet.\n\nConnection "
         "refused.",
         "a@x.example unreachable retry"},
        {"Mail to a@x.example was rejected because it\nexceeds the maximum size.",
         "a@x.example message-too-large fix"},
        {"Mail to a@x.example failed: user 'A' not found", "a@x.example unknown-mailbox suppress"},
        // for the time being
        {"<a@x.example>: 450 4.1.1 user unknown", "a@x.example unknown-mailbox retry"},
        {"Your mail to a@x.example was not delivered. The server said:\n\n450 4.1.1 user unknown",
         "a@x.example unknown-mailbox retry"},
        {"Delivery is delayed.\n\n<a@x.example>: user unknown",
         "a@x.example unknown-mailbox retry"},
        // of another recipient, or of all of a list
        {"<a@x.example>: " + gone + "\n\n<b@x.example>: 550 failed",
         "a@x.example unknown-mailbox suppress; b@x.example other retry"},
        {"not delivered to\na@x.example\nb@x.example\n\n" + gone,
         "a@x.example unknown-mailbox retry; b@x.example unknown-mailbox retry"},
        {"not delivered to\na@x.example\n\nb@x.example\n" + gone,
         "a@x.example unknown-mailbox retry; b@x.example unknown-mailbox suppress"},
        {"Failed recipients: a@x.example, b@x.example\nReason: " + gone,
         "a@x.example unknown-mailbox retry; b@x.example unknown-mailbox retry"},
        {"not delivered to\na@x.example\nb@x.example\n\n550 5.1.1 <b@x.example>... User unknown",
         "a@x.example unknown-mailbox retry; b@x.example unknown-mailbox suppress"},
        // in front of the address
        {"User not found: a@x.example\nUser mailbox exceeds allowed size: b@x.example\n",
         "a@x.example unknown-mailbox suppress; b@x.example mailbox-full retry"},
        // whom to write to instead, in the same sentence or behind it
        {"Mail to a@x.example failed. This address no longer exists, use b@x.example instead.",
         "a@x.example unknown-mailbox suppress"},
        {"Die Adresse a@x.example existiert nicht mehr. Ab sofort erreichen Sie uns unter "
         "b@x.example.",
         "a@x.example unknown-mailbox suppress"},
        {"L'adresse a@x.example n'existe plus.\nMerci de tout envoyer vers b@x.example.",
         "a@x.example unknown-mailbox suppress"},
        {"Адрес a@x.example больше не существует. Пишите на b@x.example.",
         "a@x.example unknown-mailbox suppress"},
        {"邮箱 a@x.example 不存在，以后是 b@x.example。", "a@x.example unknown-mailbox suppress"},
        {"Mail to a@x.example failed. It did not reach b@x.example. There is no such user.",
         "a@x.example other retry; b@x.example unknown-mailbox suppress"},
        // one of two, on the way
        {"Mail to a@x.example went on to b@y.example and failed: no such user.",
         "a@x.example unknown-mailbox retry; b@y.example unknown-mailbox retry"},
        {"Mail to a@x.example and b@x.example failed: no such user.",
         "a@x.example unknown-mailbox suppress; b@x.example unknown-mailbox suppress"},
        // to the sender
        {"<a@x.example>: your own address me@own.example does not exist", "a@x.example policy fix"},
        {"<a@x.example>: Die Adresse des Absenders existiert nicht", "a@x.example policy fix"},
        {"<a@x.example>: 发件人地址不存在", "a@x.example policy fix"},
        {"<a@x.example>: Absenderadresse nicht gefunden", "a@x.example policy fix"},
        {"<a@x.example>: Su cuenta no existe", "a@x.example policy fix"},
        {"<a@x.example>: Ваш IP адрес заблокирован", "a@x.example reputation fix"},
        {"<a@x.example>: host said: " + gone + " (in reply to MAIL FROM command)",
         "a@x.example policy fix"},
        {"  a@x.example\n    SMTP error after MAIL FROM:<me@own.example>:\n    " + gone,
         "a@x.example policy fix"},
        {"not delivered to a@x.example\n\nSMTP error after MAIL FROM:<me@own.example>:\n" + gone,
         "a@x.example policy fix"},
        {"not delivered to a@x.example\n\n" + gone + "\n\nThe error came after MAIL FROM once.",
         "a@x.example unknown-mailbox suppress"},
        // about the sender, whom it names
        {"<a@x.example>: host said: 550 <me@own.example>: unknown user", "a@x.example policy fix"},
        {"<a@x.example>: host said: 550 5.1.1 <me@own.example> may not write to <a@x.example>: "
         "no such user",
         "a@x.example unknown-mailbox suppress"},
        {"<a@x.example>: host said: 550 Sender me@own.example does not exist",
         "a@x.example policy fix"},
        {"<a@x.example>: host said: 535 5.7.8 invalid user", "a@x.example policy fix"},
        {"<a@x.example>: host said: 550 unknown host (Client host rejected)",
         "a@x.example policy fix"},
        {"<a@x.example>: 550 Sender me@own.example has no such mailbox, nothing for a@x.example",
         "a@x.example policy fix"},
        {"<a@x.example>: 550 a@x.example: User unknown. Your IP is noted, sender me@own.example",
         "a@x.example unknown-mailbox suppress"},
        {"<a@x.example>: host said: 550 Unknown host 192.0.2.9, we know no such domain",
         "a@x.example reputation fix"},
        // what comes first, not what may be thought
        {"<a@x.example>: host said: 550 No such user. If you think you were taken for spam, write",
         "a@x.example unknown-mailbox suppress"},
        // by its name
        {"<ann@x.example>: host said: 550 Mailbox \"Ann\" does not exist",
         "ann@x.example unknown-mailbox suppress"},
        {"<ann@x.example>: host said: 550 No user ann here",
         "ann@x.example unknown-mailbox suppress"},
        {"<ann@x.example>: host said: 550 Der Benutzer \"ann\" ist unbekannt",
         "ann@x.example unknown-mailbox suppress"},
        {"<ann@x.example>: Certificat du destinataire introuvable", "ann@x.example policy fix"},
        // by a sentence that begins with a mailbox
        {"<ann@x.example>: Das Postfach konnte leider nicht gefunden werden.",
         "ann@x.example unknown-mailbox suppress"},
        {"<ann@x.example>: Der Eintrag im Postfach konnte nicht gefunden werden.",
         "ann@x.example unknown-mailbox retry"},
        {"<ann@x.example>: La cuenta ya no es válida.", "ann@x.example unknown-mailbox suppress"},
        {"<ann@x.example>: La cuenta no es válida para enviar.",
         "ann@x.example unknown-mailbox retry"},
        // after the message, but with the address
        {"<a@x.example>: host said: 554 This user doesn't have an account here (a@x.example) [0] "
         "(in reply to end of DATA command)",
         "a@x.example unknown-mailbox suppress"},
        // the list is one of the sender's, who is not meant
        {"<a@x.example>: not sent, because it is on the suppression list for your account. See",
         "a@x.example inactive-mailbox suppress"},
        {"<ann@x.example>: host said: 550 Not found: ann@x.example",
         "ann@x.example unknown-mailbox suppress"},
        {"<ann@x.example>: host said: 550 Route not found: ann@x.example",
         "ann@x.example unknown-mailbox retry"},
        {"<ann@x.example>: Le dossier de l'utilisateur est introuvable.",
         "ann@x.example unknown-mailbox retry"},
        {"<ann@x.example>: El usuario no se encuentra en este momento.",
         "ann@x.example unknown-mailbox retry"},
        {"<ann@x.example>: Reply-To: mail address is not valid", "ann@x.example policy fix"},
        {"<ann@x.example>: El correo ha sido eliminado por el filtro",
         "ann@x.example unknown-mailbox retry"},
        {"<ann@x.example>: La cuenta de correo ha sido eliminada",
         "ann@x.example inactive-mailbox suppress"},
        {"<ann@x.example>: La cuenta ha sido suspendida temporalmente",
         "ann@x.example inactive-mailbox retry"},
        {"<ann@x.example>: 邮箱已被冻结，暂时无法接收邮件", "ann@x.example inactive-mailbox retry"},
        {"<ann@x.example>: SSLv3 is permanently disabled", "ann@x.example inactive-mailbox retry"},
        {"<ann@x.example>: This address is closed to non-members", "ann@x.example policy fix"},
        {"<ann@x.example>: 差出人のメールアドレスが存在しません", "ann@x.example policy fix"},
        {"One or more of these addresses do not exist:\n\n  a@x.example\n  b@x.example\n",
         "a@x.example unknown-mailbox retry; b@x.example unknown-mailbox retry"},
        // by the heading of a list
        {"These addresses do not exist:\n\n  a@x.example\n  b@x.example\n\nTake them off.",
         "a@x.example unknown-mailbox suppress; b@x.example unknown-mailbox suppress"},
        {"These addresses do not exist:\n\n  me@own.example\n  a@x.example\n",
         "a@x.example unknown-mailbox suppress"},
        {"<ann@x.example>: host said: 550 5.1.1 <me@own.example> is no one; not for ann@x.example",
         "ann@x.example policy fix"},
        {"<ann@x.example>: host said: 550 SPF of domain x.example not found",
         "ann@x.example authentication fix"},
        {"<ann@x.example>: host said: 550 No user anna here",
         "ann@x.example unknown-mailbox retry"},
        {"<ann@x.example>: host said: 550 Key of user ann not found",
         "ann@x.example unknown-mailbox retry"},
        {"<ann@x.example>: host said: 550 User ann not found in the list of senders",
         "ann@x.example unknown-mailbox retry"},
        // about the sender, whom the server asked after
        {"<ann@x.example>: host said: 550 No user <me@own.example>; for ann@x.example",
         "ann@x.example policy fix"},
        {"<ann@x.example>: host said: 550 Unknown host mail.own.example",
         "ann@x.example policy fix"},
        // a version, or the codes of several
        {"<a@x.example>\n\n-- \nMailGate 5.1.10", "a@x.example unknown-domain retry"},
        {"<a@x.example>\n\n550 5.1.10: no domain\n552 5.2.2: no room",
         "a@x.example unknown-domain retry"},
        // one of several behind the address
        {"<a@x.example>\n    (reason: " + gone + ")\n    (expanded from: <all@z.example>)",
         "all@z.example->a@x.example unknown-mailbox retry"},
        {"Recipient: a@x.example\nOriginal recipient: a@x.example\nReason: " + gone,
         "a@x.example unknown-mailbox suppress"},
        {"Original recipient: a@x.example\nReason: " + gone,
         "a@x.example unknown-mailbox suppress"},
        {"<ann@x.example>: host said: 550 5.7.1 Mailbox ann was not found",
         "ann@x.example unknown-mailbox suppress"},
        {"<ann@x.example>: host said: 550 Key \"Ann\" does not exist",
         "ann@x.example unknown-mailbox retry"},
        // about another host than that of the recipient
        {"<a@x.example>: Name service error for name=relay.own.example type=A: Host not found",
         "a@x.example unknown-domain retry"},
        {"<a@x.example>: Name service error for name=x.example type=A: Host not found",
         "a@x.example unknown-domain suppress"},
        // by a filter, when the recipient had been accepted
        {"<a@x.example>: host said: 550 unknown user (in reply to end of DATA command)",
         "a@x.example unknown-mailbox retry"},
        {"<a@x.example>: host said: " + gone + " (in reply to end of DATA command)",
         "a@x.example unknown-mailbox suppress"},
        // temporary by its words, whatever its code
        {"<a@x.example>: 550 5.2.1 This account has been temporarily suspended",
         "a@x.example inactive-mailbox retry"},
        {"<a@x.example>: 550 5.1.1 account temporarily deactivated",
         "a@x.example unknown-mailbox retry"},
        // a success
        {"<a@x.example>: delivery via mx.x.example: 250 2.0.0 Ok\n\n<b@x.example>: " + gone,
         "a@x.example  none; b@x.example unknown-mailbox suppress"},
        {"<a@x.example>: was refused\nSize: 222\n", "a@x.example other retry"},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(advised(notice(text)), expected) << text;
}

/// An address that stands in a notice without a word that ties it to the failure, or behind what
/// begins the returned mail.
TEST(Advice, IsNotToSuppressWhoeverElseIsNamed) {
    for (const char* text : {
             "No such user.\n\n-- \na@x.example\n",
             "Your mail to <a@x.example> could not be delivered.\n\nUnknown user me@own.example\n",
             "No such user.\n\nWrite to\n\na@x.example\n\nYour mail could not be delivered.\n",
             "Unknown user.\n\nSuccessfully delivered to:\n  a@x.example\n",
             "Unknown user.\n\nContact:\na@x.example\n",
             "The user has moved to a@x.example\n",
             "<john a@x.example>: user unknown\n",
             "<john,a@x.example>: user unknown\n",
             "b@x.example: mailbox full.\n\nYour message was:\n\na@x.example: user unknown\n",
             "b@x.example: mailbox full\n\nIhre Nachricht lautete:\n\na@x.example: no such user\n",
         }) {
        EXPECT_EQ(advised(notice(text)).find("suppress"), std::string::npos) << text;
    }
    for (const char* text : {
             "The following addresses failed:\n\na@x.example\n\nuser unknown\n",
             "User unknown:\n\na@x.example\n",
             "Your mail to\n\na@x.example\n\ncould not be delivered.\n\nUser unknown.\n",
             "User unknown:\n\nmailer-daemon@x.example\n\na@x.example\n",
             "<mailto:a@x.example>: user unknown\n",
         }) {
        EXPECT_EQ(advised(notice(text)), "a@x.example unknown-mailbox suppress") << text;
    }
}

/// What came back names others than who failed: its own sender, a list, whom it answers.
TEST(Advice, IsNotAboutWhoeverTheReturnedMailIsTo) {
    const auto returned = [](const std::string& header) {
        return advised(
            "From: MAILER-DAEMON@mx.example\nTo: bounces@own.example\n"
            "Content-Type: multipart/mixed; boundary=b\n\n" +
            part("text/plain", "could not be delivered: no such user") +
            part("message/rfc822", "From: news@own.example\n" + header + "\n\nHi.") + "--b--\n");
    };
    EXPECT_EQ(returned("To: a@x.example"), "a@x.example unknown-mailbox suppress");
    EXPECT_EQ(returned("To: Club <news@own.example>"), "");
    EXPECT_EQ(returned("To: devs@lists.example\nList-Post: <mailto:devs@lists.example>"), "");
    EXPECT_EQ(returned("Received: by mx for <a@x.example>; today\nTo: b@y.example\n"
                       "List-Id: <devs.lists.example>"),
              "a@x.example unknown-mailbox suppress");
}

TEST(Advice, OfAReportIsForTheRecipientOfEachGroup) {
    const auto group = [](const std::string& address, const std::string& fields) {
        return "Final-Recipient: rfc822;" + address + "\nAction: failed\n" + fields + "\n\n";
    };
    const std::string silent = group("a@x.example", "Status: 5.0.0");
    const auto read = [](const std::string& text, const std::string& status) {
        return advised(report(part("text/plain", text) + part("message/delivery-status", status)));
    };
    const std::string gone = group("b@x.example", "Diagnostic-Code: smtp; 550 5.1.1 user unknown");
    EXPECT_EQ(read("Sorry.", silent + gone),
              "a@x.example other retry; b@x.example unknown-mailbox suppress");
    EXPECT_EQ(read("user unknown", silent), "a@x.example unknown-mailbox suppress");
    // a reply to the host that sent it
    EXPECT_EQ(read("<a@x.example>: 550 Host does not exist (in reply to\n    EHLO command)",
                   group("a@x.example", "Diagnostic-Code: smtp; 550 Host does not exist")),
              "a@x.example policy fix");
    // only a reply can have come after the message
    EXPECT_EQ(read("<b@x.example>: 550 5.1.1 user unknown (in reply to end of DATA command)",
                   group("a@x.example", "Diagnostic-Code: x; Host not found") + gone),
              "a@x.example unknown-domain suppress; b@x.example unknown-mailbox suppress");
    // words that are found in the text count before a status without words
    EXPECT_EQ(read("<a@x.example>: 552 5.2.2 Mailbox is full",
                   group("a@x.example", "Status: 5.1.1") + group("b@x.example", "Status: 5.0.0")),
              "a@x.example mailbox-full retry; b@x.example mailbox-full retry");
    EXPECT_EQ(read("user unknown", silent + gone),
              "a@x.example unknown-mailbox retry; b@x.example unknown-mailbox suppress");
    EXPECT_EQ(read("<b@x.example>: over quota\n<a@x.example>: user unknown\n",
                   silent + group("b@x.example", "")),
              "a@x.example unknown-mailbox suppress; b@x.example mailbox-full retry");
    // one address of several people, some of whom got it
    const auto member = [](const std::string& address, const std::string& action) {
        return "Original-Recipient: rfc822;team@x.example\nFinal-Recipient: rfc822;" + address +
               "@y.example\nAction: " + action + "\n\n";
    };
    EXPECT_EQ(
        read("Sorry.", member("a", "delivered") +
                           member("b", "failed\nDiagnostic-Code: smtp; 550 5.1.1 unknown user") +
                           member("c", "delivered")),
        "team@x.example->b@y.example unknown-mailbox retry");
    EXPECT_EQ(read("user unknown", group("a@x.example", "Diagnostic-Code: smtp; 552 5.2.2 full")),
              "a@x.example mailbox-full retry");
}

TEST(Advice, IsNotAboutReportsThatAPersonPassesOn) {
    for (const std::string& report :
         {part("message/feedback-report", "Feedback-Type: abuse\nOriginal-Rcpt-To: a@x.example"),
          part("message/disposition-notification",
               "Final-Recipient: rfc822;a@x.example\nDisposition: manual-action; displayed"),
          part("message/delivery-status", "Final-Recipient: rfc822;a@x.example\nAction: failed")}) {
        EXPECT_EQ(advised("From: b@x.example\nSubject: look\n"
                          "Content-Type: multipart/mixed; boundary=b\n\n" +
                          report + "--b--\n"),
                  "")
            << report;
    }
}

}  // namespace
}  // namespace bouncecheck
