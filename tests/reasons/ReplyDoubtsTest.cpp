#include <gtest/gtest.h>

#include <string_view>

#include "reasons/ReasonFinder.h"

namespace bouncecheck {
namespace {

/// Pairs of replies of which one leaves no doubt.
TEST(ReplyDoubts, AreAboutWhatElseAReplySays) {
    struct Case {
        std::string_view text;
        Reason reason;
        bool isSure;
    };
    constexpr Reason mailbox = Reason::unknownMailbox;
    const Case cases[] = {
        // another cause
        {"550 user unknown or moved", mailbox, true},
        {"550 user unknown or access denied", mailbox, false},
        {"550 user unknown or due to virus", mailbox, false},
        {"550 user unknown or rejects mail from you", mailbox, false},
        {"550 user unknown: unknown error", mailbox, true},
        {"550 user unknown: LDAP timeout", mailbox, false},
        {"550 user unknown, host down", mailbox, false},
        {"550 LDAP timeout: user unknown", mailbox, true},
        {"550 domain not found: host down", Reason::unknownDomain, true},
        {"550 user unknown (SPF)", mailbox, false},
        {"550 user unknown (spam)", mailbox, true},
        {"550 SPF: user unknown", mailbox, true},
        {"550 SPF: domain not found", Reason::unknownDomain, false},
        // something of a mailbox, or less
        {"550 License for no such user", mailbox, true},
        {"550 License for user not found", mailbox, false},
        {"550 user removed", mailbox, true},
        {"550 user removed from the list", mailbox, false},
        {"550 user removed\nServer ready", mailbox, true},
        {"550 user removed\n server table", mailbox, false},
        {"550 user removed from\nthe list", mailbox, false},
        {"550 proxy user unknown", mailbox, false},
        {"550 If the following users are unknown", mailbox, false},
        {"550 no address by that name", mailbox, true},
        {"550 no address by that name may send", mailbox, false},
        {"550 LDAP: unknown user for authentication", mailbox, false},
        {"550 no existe una cuenta con ese nombre", mailbox, true},
        {"550 no existe una cuenta con permiso", mailbox, false},
        {"550 такого адреса нет на сервере", mailbox, true},
        {"550 такого адреса нет в белом списке", mailbox, false},
        {"550 takiego adresu nie ma na liście", mailbox, false},
        // less than that it is so
        {"550 Perhaps the user does not exist", mailbox, false},
        {"550 This may mean that the user does not exist", mailbox, false},
        {"550 L'utente non esiste", mailbox, true},
        {"550 Se l'utente non esiste", mailbox, false},
        {"550 L'utente non esiste ancora", mailbox, false},
        {"550 用户不存在", mailbox, true},
        {"550 如果用户不存在", mailbox, false},
        {"550 ユーザーが存在しない", mailbox, true},
        {"550 ユーザーが存在しない可能性があります", mailbox, false},
        {"550 user unknown?", mailbox, false},
        // in front of an advice
        {"550 Unknown user. If you think so, write", mailbox, true},
        {"550 Unknown user. If you think so: it was a spam message", mailbox, true},
        {"550 Unknown user or refused. If you think so, write", mailbox, false},
        {"550 Unknown user for sender. If you think so, write", mailbox, false},
        {"550 user unknown: LDAP timeout. If you think so, write", mailbox, false},
        {"550 License for user unknown. If you think so, write", mailbox, false},
        {"550 mailbox disabled until 1 May. If you think so, write", Reason::inactiveMailbox,
         false},
        // codes
        {"550 5.7.0 user unknown", mailbox, true},
        {"550 5.7.26 user unknown", mailbox, false},
        {"535 user unknown", Reason::policy, false},
        {"550 5.1.8 user unknown", Reason::policy, false},
        {"5.1.0 - Unknown address error 550-'user unknown'", mailbox, true},
        {"5.1.0 - Unknown address error 535-'user unknown'", Reason::policy, false},
        {"rejected by the recipient domain. It said: 550 550 a not found", mailbox, true},
        // hosts
        {"550 mailbox disabled: see us", Reason::inactiveMailbox, true},
        {"550 mailbox disabled: 192.0.2.1", Reason::reputation, true},
        {"error 550-'mailbox disabled: 192.0.2.1'", Reason::reputation, true},
        {"550 Host unknown: 192.0.2.1", Reason::reputation, true},
        // the sender
        {"550 User unknown (in reply to RCPT TO command)", mailbox, true},
        {"550 User unknown (in reply to MAIL FROM command)", Reason::policy, false},
        {"550 a@x.example: User unknown (in reply to MAIL FROM command)", mailbox, true},
        {"550 Sender: user unknown", Reason::policy, false},
        {"550 Returned to sender: user unknown", mailbox, true},
        {"550 Sender user could not be located", Reason::policy, false},
        {"550 Login failed, user name unknown", Reason::policy, false},
        {"550 HELO is not a valid mail domain", Reason::policy, false},
        {"550 No such mobile number", mailbox, true},
        {"550 Invalid mobile number of originator", mailbox, false},
        {"550 You do not appear to be a valid user", Reason::policy, false},
        // hints
        {"550 User a does not exist, spam", mailbox, true},
        {"550 It does not exist", mailbox, false},
        {"#550 a does not exist [RCPT_TO]", mailbox, true},
        {"smtp;550 a does not exist", mailbox, true},
    };
    for (const Case& c : cases) {
        const ReasonFinding finding = reasonOf({.text = c.text, .address = "a@x.example"});
        EXPECT_EQ(nameOf(finding.reason), nameOf(c.reason)) << c.text << " by " << finding.row;
        EXPECT_EQ(finding.isSure, c.isSure) << c.text << " by " << finding.row;
    }
    EXPECT_FALSE(reasonOf({.text = "Unknown address error 550-'No such user [421]'"}).isTransient);
    EXPECT_TRUE(reasonOf({.text = "550 Unknown user, temporarily. If you think so"}).isTransient);
}

/// The code of the server itself says enough of what its words leave open.
TEST(ReplyDoubts, AreAnsweredByADefiniteStatus) {
    for (const std::string_view text :
         {"550 5.1.1 user unknown or access denied", "550 5.1.1 License for user not found",
          "550 5.1.1 user removed from the list"}) {
        EXPECT_TRUE(reasonOf({.text = text}).isSure) << text;
    }
}

}  // namespace
}  // namespace bouncecheck
