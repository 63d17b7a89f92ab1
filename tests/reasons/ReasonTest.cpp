#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>

#include "reasons/AdviceFor.h"
#include "reasons/PhraseReasons.h"
#include "reasons/ReasonFinder.h"

namespace bouncecheck {
namespace {

TEST(Reason, GoesByWhatRepliesSay) {
    struct Case {
        std::string_view status;
        std::string_view text;
        std::string_view reason;
        std::string_view advice;
    };
    const Case cases[] = {
        {"5.1.1", "550 5.1.1 <a@x.example>... User unknown", "unknown-mailbox", "suppress"},
        {"5.1.1", "550-5.1.1 The email account that you tried to reach does\r\n550 5.1.1 not exist",
         "unknown-mailbox", "suppress"},
        {"5.7.1", "550 5.7.1 No such user!", "unknown-mailbox", "suppress"},
        {"", "Sorry, no mailbox here by that name. (#5.1.1)", "unknown-mailbox", "suppress"},
        {"", "Unbekannter Empf\xC3\xA4nger", "unknown-mailbox", "suppress"},
        // not for good, or not said by anybody who knows
        {"4.1.1", "450 4.1.1 <a@x.example>: unknown user", "unknown-mailbox", "retry"},
        {"5.1.1", "550 go away", "unknown-mailbox", "retry"},
        {"5.0.0", "550 Address rejected", "unknown-mailbox", "retry"},
        {"5.0.0", "554 transaction failed", "other", "retry"},
        {"5.7.1", "550 5.7.1", "policy", "fix"},
        // the words count before the code
        {"5.1.1", "550 5.1.1 rejected: spam message", "content", "fix"},
        {"5.1.1", "550 5.1.1 mailbox is full", "mailbox-full", "retry"},
        {"5.7.1", "550 5.7.1 Sender address rejected: Domain not found", "policy", "fix"},
        {"5.4.1", "550 5.4.1 Recipient address rejected: Access denied", "unknown-mailbox",
         "suppress"},
        {"5.0.0", "5.1.0 - Unknown address error 554-'5.7.1 blocked using zen.spamhaus.org'",
         "reputation", "fix"},
        {"", "SMTP error after MAIL FROM:<me@own.example>: 550 5.1.0 x.example does not exist",
         "policy", "fix"},
        {"5.1.1", "550 5.1.1 Refused due to recipient preferences", "policy", "fix"},
        {"", "550 Rule imposed mailbox access for ann@x.example refused: user access denied",
         "policy", "fix"},
        {"", "550 Rule imposed mailbox access for ann@x.example refused: user invalid",
         "unknown-mailbox", "suppress"},
        {"", "553 you are trying to use me as a relay, but I have not been configured to let you",
         "policy", "fix"},
        {"", "user does not exist, but will deliver to /home/x/\ncan not open new file errno=122",
         "mailbox-full", "retry"},
        {"", "The DNS records for the\ndestination computer could not be found. Host x not found",
         "unknown-domain", "suppress"},
        {"", "Reason: sender's host name was not found", "unknown-domain", "retry"},
        // the other reasons
        {"5.1.2", "550 5.1.2 <a@x.example>... Host unknown", "unknown-domain", "suppress"},
        {"5.4.4", "Host or domain name not found. Name service error for name=x.example",
         "unknown-domain", "suppress"},
        {"4.4.3", "Host or domain name not found. Host not found, try again", "unreachable",
         "retry"},
        {"5.2.1", "550 5.2.1 The email account that you tried to reach is disabled",
         "inactive-mailbox", "suppress"},
        {"5.2.1", "550 5.2.1", "inactive-mailbox", "retry"},
        {"4.2.2", "452 4.2.2 over quota", "mailbox-full", "retry"},
        {"5.3.4", "552 5.3.4 Message size exceeds fixed limit", "message-too-large", "fix"},
        {"5.7.26",
         "550-5.7.26 Unauthenticated email from x.example is not accepted due to\r\n"
         "550 5.7.26 domain's DMARC policy",
         "authentication", "fix"},
        {"5.7.1", "554 5.7.1 Service unavailable; Client host [192.0.2.1] blocked using a list",
         "reputation", "fix"},
        {"5.7.25", "550 5.7.25 no PTR record", "reputation", "fix"},
        {"5.7.1", "550 5.7.1 Relaying denied", "policy", "fix"},
        {"4.7.28", "421 4.7.28 too many messages", "rate-limit", "retry"},
        {"4.4.2", "lost connection with mx.x.example while sending", "expired", "retry"},
        {"", "connect to mx.x.example[192.0.2.1]:25: Connection refused", "unreachable", "retry"},
        {"", "retry timeout exceeded", "expired", "retry"},
        {"4.3.0", "451 4.3.0 internal error", "system", "retry"},
        // a refusal is about the host where it names one
        {"", "554 mx1 198.51.100.7 blocked. See our page", "reputation", "fix"},
        {"", "550 Mail rejected: [2001:db8::7]", "reputation", "fix"},
        {"", "554 seu IP 198.51.100.7 foi bloqueado", "reputation", "fix"},
        {"", "550 Message blocked, id 1.2.3", "policy", "fix"},
        // a fault for the time being, or a wrong way to say it
        {"", "451 4.3.0 Mail server temporarily rejected message", "system", "retry"},
        {"", "451 4.7.1 Message rejected", "policy", "fix"},
        // the same words, said of the host, of its names or of the message
        {"", "421 The server has exceeded the connection limit. It has to do with IP reputation",
         "rate-limit", "retry"},
        {"", "550 blocked by your organization using Tenant Allow Block List", "policy", "fix"},
        {"", "Connected to 192.0.2.1 but greeting failed. 521 198.51.100.0/24 is banned",
         "reputation", "fix"},
        {"", "421 closing connection due to inactivity", "unreachable", "retry"},
        {"", "450 4.7.1 Too many of them", "rate-limit", "retry"},
        {"5.7.0", "192.0.2.1 does not like recipient. 554 5.7.0 not sent by an owner", "policy",
         "fix"},
        // two causes, of which one leaves the mailbox alone
        {"", "550 user unknown or access denied", "unknown-mailbox", "retry"},
        {"", "550 user unknown or mailbox disabled", "inactive-mailbox", "suppress"},
        {"5.1.1", "550 5.1.1 user unknown or access denied", "unknown-mailbox", "suppress"},
        {"", "550 user not found: LDAP server unavailable", "unknown-mailbox", "retry"},
        {"", "550 No such user in SPF", "unknown-mailbox", "retry"},
        {"", "550 SPF record of domain not found", "unknown-domain", "retry"},
        {"", "550 No such user. Report spam to us", "unknown-mailbox", "suppress"},
        {"", "550 Callout timeout 30s: user unknown", "unknown-mailbox", "suppress"},
        // something of a mailbox
        {"", "554 License for user not found", "unknown-mailbox", "retry"},
        {"", "550 Le profil de l'utilisateur introuvable", "unknown-mailbox", "retry"},
        {"", "550 Mailbox of user not found", "unknown-mailbox", "suppress"},
        {"", "550 Session with user ann@x.example not found", "unknown-mailbox", "retry"},
        // what is only supposed
        {"", "550 This happens if the mailbox does not exist", "unknown-mailbox", "retry"},
        {"", "550 Si la cuenta no existe", "unknown-mailbox", "retry"},
        {"5.1.1", "550 5.1.1 Rejected when the user is unknown", "unknown-mailbox", "suppress"},
        // nobody who left
        {"", "550 Der Server arbeitet nicht mehr", "other", "retry"},
        {"", "550 Ann arbeitet nicht mehr bei uns", "unknown-mailbox", "suppress"},
        {"", "550 Su dominio ya no pertenece a la lista", "other", "retry"},
        {"", "550 Gönderen hesabı bulunamadı", "policy", "fix"},
        {"", "550 Connection to ann@x.example was closed", "inactive-mailbox", "retry"},
        {"", "550 Delivery to ann@x.example does not exist", "unknown-mailbox", "suppress"},
        // for a while, or for some mail
        {"", "550 Mailbox disabled at the moment", "inactive-mailbox", "retry"},
        {"", "550 <nosuchuser@x.example> NoSuchUser at the moment", "unknown-mailbox", "retry"},
        {"5.1.1", "User removed from the list", "unknown-mailbox", "suppress"},
        {"", "550 User removed from the list", "unknown-mailbox", "retry"},
        {"5.1.1", "550 5.1.1 Home directory of user not found", "unknown-mailbox", "suppress"},
        // what one reason has in common with another
        {"", "User jdoe (jdoe@x.example) not listed in Domino Directory", "unknown-mailbox",
         "suppress"},
        {"5.7.1", "550-Verification failed for <a@x.example>\r\n550 Sender verify failed", "policy",
         "fix"},
        {"5.2.2", "550 zu viele Mails / User has too many messages on the server", "mailbox-full",
         "retry"},
        {"", "551 Mailbox <a@x.example> is full", "mailbox-full", "retry"},
        {"5.7.1", "554 5.7.1 Message refused: virus Eicar found", "content", "fix"},
        {"4.4.1", "delivery temporarily suspended: connect to x.example: Connection refused",
         "expired", "retry"},
        {"", "delivery temporarily suspended: Server internal error", "system", "retry"},
        {"",
         "\xD0\x9F\xD0\xBE\xD0\xBB\xD1\x83\xD1\x87\xD0\xB0\xD1\x82\xD0\xB5\xD0\xBB\xD1\x8C "
         "\xD0\xBD\xD0\xB5 \xD0\xBD\xD0\xB0\xD0\xB9\xD0\xB4\xD0\xB5\xD0\xBD",
         "unknown-mailbox", "suppress"},
        {"", "can't create user output file. procmail: Quota exceeded while writing",
         "mailbox-full", "retry"},
        {"", "vacation: no such user. 554 |vacation... Unknown mailer error 2", "system", "retry"},
        {"", "Unknown subscriber", "unknown-mailbox", "suppress"},
        {"", "La boîte aux lettres du client est pleine", "mailbox-full", "retry"},
        {"", "A conta está desativada", "inactive-mailbox", "suppress"},
        {"", "Unscannable attachment", "content", "fix"},
        {"", "weil die Adresse nicht existiert", "unknown-mailbox", "retry"},
        {"", "n'est pas répertorié dans l'annuaire Domino", "unknown-mailbox", "suppress"},
        {"", "Uw bericht is als spam aangemerkt", "content", "fix"},
        {"", "Wiadomość jest zbyt duża", "message-too-large", "fix"},
        {"", "Il server di destinazione non risponde", "unreachable", "retry"},
        {"", "Conta inexistente, cuenta inexistente", "unknown-mailbox", "suppress"},
        {"", "", "other", "retry"},
    };
    for (const Case& c : cases) {
        const ReasonFinding finding = reasonOf({.status = c.status, .text = c.text});
        EXPECT_EQ(nameOf(finding.reason), c.reason) << c.text << " by " << finding.row;
        EXPECT_EQ(nameOf(adviceFor(Outcome::failed, finding)), c.advice) << c.text;
        EXPECT_LE(finding.at + finding.length, c.text.size());
        for (std::size_t size = 0; size < c.text.size(); ++size) {
            const ReasonFinding cut = reasonOf({.text = c.text.substr(0, size)}, c.text);
            EXPECT_LE(cut.at + cut.length, c.text.size());
        }
    }
}

TEST(Reason, IsSaidOfTheMailboxInOtherLanguages) {
    struct Case {
        std::string_view text, reason, advice;
    };
    const Case cases[] = {
        {"550 Účet příjemce neexistuje", "unknown-mailbox", "suppress"},
        {"550 Kontot existerar inte", "unknown-mailbox", "suppress"},
        {"550 E-posta adresi artık mevcut değil", "unknown-mailbox", "suppress"},
        {"550 ПОЛЬЗОВАТЕЛЬ УДАЛЕН", "unknown-mailbox", "suppress"},
        {"550 Η διεύθυνση δεν είναι έγκυρη", "unknown-mailbox", "suppress"},
        {"550 메일 주소가 올바르지 않습니다", "unknown-mailbox", "suppress"},
        {"550 该邮箱已注销", "inactive-mailbox", "suppress"},
        {"550 Kvóta túllépve", "mailbox-full", "retry"},
        {"550 A levél túl nagy", "message-too-large", "fix"},
        {"550 Klíč příjemce neexistuje", "unknown-mailbox", "retry"},
        {"550 Certifikatet er ugyldig", "unknown-mailbox", "retry"},
        {"550 送信者のアカウントは削除されました", "policy", "fix"},
        {"550 Din konto findes ikke", "policy", "fix"},
        {"550 Osoite on tilapäisesti tuntematon", "unknown-mailbox", "retry"},
    };
    for (const Case& c : cases) {
        const ReasonFinding finding = reasonOf({.text = c.text, .address = "a@x.example"});
        EXPECT_EQ(nameOf(finding.reason), c.reason) << c.text << " by " << finding.row;
        EXPECT_EQ(nameOf(adviceFor(Outcome::failed, finding)), c.advice) << c.text;
    }
}

TEST(Reason, DependsOnTheOutcome) {
    const Reply reply = {.outcome = Outcome::delayed, .text = "550 5.1.1 user unknown"};
    EXPECT_EQ(adviceFor(Outcome::delayed, reasonOf(reply)), Advice::retry);
    EXPECT_EQ(adviceFor(Outcome::complained, {}), Advice::unsubscribe);
    const ReasonFinding none = reasonOf({.outcome = Outcome::delivered, .text = "user unknown"});
    EXPECT_EQ(none.reason, Reason::none);
    EXPECT_EQ(adviceFor(Outcome::delivered, none), Advice::none);
}

/// Each row has evidence of one rank and of all ranks below it; the highest counts.
TEST(Reason, GoesByTheBestEvidence) {
    struct Case {
        std::string_view status, text, notice, row;
        bool isSure, isInNotice;
    };
    const Case cases[] = {
        {"5.7.1", "550 5.2.2 user unknown, connection refused, blocked", "over quota",
         "user unknown", false, false},
        {"5.2.2", "550 5.7.1 connection refused, blocked", "over quota", "X.2.2", true, false},
        {"5.7.1", "550 5.1.2 connection refused", "over quota", "X.1.2", true, false},
        {"5.7.1", "550 connection refused, blocked", "over quota", "connection refused", true,
         false},
        // a vague code before a hint at something else, unless it is the code of any failure
        {"5.7.1", "550 invalid", "over quota", "X.7.1", false, false},
        {"5.4.4", "550 blocked", "over quota", "X.4.4", false, false},
        {"5.3.0", "550 blocked", "over quota", "blocked", false, false},
        {"5.1.0", "550 unknown", "over quota", "unknown", true, false},
        {"", "550 unknown", "over quota", "unknown", false, false},
        // words without a code may announce what the notice quotes
        {"", "was blocked", "over quota", "blocked", false, false},
        {"", "was blocked", "the server said: 552 over quota", "over quota", true, true},
        {"", "554 blocked", "the server said: 552 over quota", "blocked", false, false},
        {"5.7.1", "550", "over quota", "over quota", true, true},
        {"5.7.1", "550", "rejected", "rejected", false, true},
        {"5.7.1", "552", "Sorry.", "X.7.1", false, false},
        {"", "552", "Sorry.", "552", false, false},
        {"", "556", "Sorry.", "556", true, false},
        {"", "550", "Sorry.", "", false, false},
        // a field that restates the reply says nothing of its own
        {"5.1.1", "550 blocked", "", "blocked", false, false},
        {"5.1.1", "550 invalid request", "", "invalid", false, false},
        {"5.1.2", "550 blocked", "", "X.1.2", true, false},
        // a code about something else leaves doubts
        {"", "550 5.5.1 user unknown", "", "user unknown", false, false},
        {"", "550 5.5.0 user unknown", "", "user unknown", true, false},
    };
    for (const Case& c : cases) {
        const ReasonFinding finding = reasonOf({.status = c.status, .text = c.text}, c.notice);
        EXPECT_EQ(finding.row, c.row) << c.status << " " << c.text;
        EXPECT_EQ(finding.isSure, c.isSure) << c.status << " " << c.text;
        EXPECT_EQ(finding.inNotice, c.isInNotice) << c.status << " " << c.text;
    }
}

/// What is said of a domain that is named is said of the recipient's only.
TEST(Reason, IsAboutTheDomainThatIsNamed) {
    const std::pair<std::string_view, Reason> cases[] = {
        {"550 The domain X.example does not exist", Reason::unknownDomain},
        {"550 5.0.0 <x.example> is not found", Reason::unknownDomain},
        {"550 The domain y.example does not exist", Reason::unknownMailbox},
        {"550 The record of x.example is not found", Reason::unknownMailbox},
    };
    for (const auto& [text, reason] : cases) {
        const ReasonFinding finding = reasonOf({.text = text, .address = "ann@x.example"});
        EXPECT_EQ(nameOf(finding.reason), nameOf(reason)) << text;
        EXPECT_EQ(finding.isSure, reason == Reason::unknownDomain) << text;
    }
}

/// Of hints that a mailbox is closed, those are sure that say so of the recipient's own, for good.
TEST(Reason, IsSureOfAMailboxThatIsClosedForGood) {
    const std::pair<std::string_view, bool> cases[] = {
        {"550 Account ann has been closed", true},
        {"550 User ann@x.example decommissioned.", true},
        {"550 El usuario ann fue cancelado en este servidor", true},
        {"550 La cuenta fue cancelada", true},
        {"550 Virtual user ann has been closed on our server", true},
        {"550 The list of account ann has been closed", false},
        {"550 Account joe has been closed", false},
        {"550 Delivery to ann@x.example was terminated due to timeout", false},
        {"550 ann@x.example was terminated", true},
        {"550 La regla de la cuenta fue cancelada", false},
        {"550 Account ann is on hold", false},
        {"550 Konto wurde gesperrt", false},
        {"450 La cuenta fue cancelada", true},
    };
    for (const auto& [text, isSure] : cases) {
        for (const bool inNotice : {false, true}) {
            const ReasonFinding finding = reasonOf(
                {.text = inNotice ? "" : text, .address = "ann@x.example"}, inNotice ? text : "");
            EXPECT_EQ(finding.reason, Reason::inactiveMailbox) << text;
            EXPECT_EQ(finding.isSure, isSure) << text;
        }
    }
    // Some mailboxes are called as what is said of is.
    for (const std::string_view address : {"mail@x.example", "service@x.example"}) {
        const std::string text =
            "550 " + std::string(address.substr(0, address.find('@'))) + " was removed";
        EXPECT_FALSE(reasonOf({.text = text, .address = address}).isSure) << text;
    }
    EXPECT_EQ(
        reasonOf({.text = "550 Domain x.example was decommissioned", .address = "a@x.example"})
            .reason,
        Reason::unknownDomain);
}

TEST(Reason, IsThatOfAWordWhereNothingElseIsSaid) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"554 5.7.1 Denied (SPF)", "spf"},
        {"550 5.7.1 refused, spam/RBL", "rbl"},
        {"451 4.7.1 PTR, try again later", "ptr"},
        {"550 5.7.1 invalid (SPF)", "spf"},
        {"550 5.7.1 Message rejected at mx, spam.x.example, see https://x.example/spf",
         "message rejected"},
        {"550 5.1.1 user unknown, spf", "user unknown"},
        {"550 over quota: spam", "over quota"},
    };
    for (const auto& [text, row] : cases) EXPECT_EQ(reasonOf({.text = text}).row, row) << text;
}

/// A row that another one hides, or that stands twice, would never say anything.
TEST(Reason, IsThatOfEachRow) {
    std::set<std::string_view> phrases;
    for (const PhraseKind kind : {PhraseKind::clear, PhraseKind::fair, PhraseKind::hint}) {
        for (const PhraseRow& row : phraseRows(kind)) {
            EXPECT_TRUE(phrases.insert(row.phrase).second) << row.phrase;
            std::string text(row.phrase);
            if (const std::size_t at = text.find('@'); at != std::string::npos) {
                text.replace(at, 1, "a@x.example");
            }
            EXPECT_EQ(nameOf(reasonOf({.text = text}).reason), nameOf(row.reason)) << row.phrase;
        }
    }
}

}  // namespace
}  // namespace bouncecheck
