#include "reasons/NamedParty.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <utility>

namespace bouncecheck {
namespace {

TEST(NamedParty, IsAHostByItsAddress) {
    const std::pair<std::string_view, bool> cases[] = {
        {"Mail from 192.0.2.1 has been banned", true},
        {"banned: [2001:db8::1]", true},
        {"The network 192.0.2.0/24 is (temporarily) banned.", true},
        {"banned from 192.0.2.1.", true},
        {"banned, see 192.0.2.1", false},
        {"192.0.2.1 is well, but you are banned", false},
        {"Version 1.2.3 banned", false},
        {"banned at 10:30", false},
        {"banned", false},
    };
    for (const auto& [text, isHost] : cases) {
        EXPECT_EQ(isSaidOfHost(text, text.find("banned"), 6), isHost) << text;
    }
}

TEST(NamedParty, IsWhoIsCalledSo) {
    static constexpr auto kinds = std::to_array<std::string_view>({"user"});
    const std::pair<std::string_view, bool> cases[] = {
        {"550 5.1.1 Ann unknown", true},         {"550 User \"ann\" is unknown", true},
        {"the user <ann> unknown", true},        {"Sender ann unknown", false},
        {"user ann: the host unknown", false},   {"user joann unknown", false},
        {"the key of user ann unknown", false},  {"mail for user ann unknown", false},
        {"550 User ID ann unknown", true},       {"The user name ann is unknown", true},
        {"The email user ann is unknown", true}, {"The proxy user ann is unknown", false},
        {"550 ID ann unknown", false},           {"unknown", false},
        {"It says that user ann unknown", true}, {"It is possible that user ann unknown", false},
    };
    for (const auto& [text, isAnn] : cases) {
        EXPECT_EQ(isSaidOf(text, text.find("unknown"), "ann", kinds), isAnn) << text;
    }
    EXPECT_TRUE(isFollowedBy("No user <Ann@x.example>", 7, "ann"));
    EXPECT_TRUE(isFollowedBy("No user ann here", 7, "ann"));
    EXPECT_FALSE(isFollowedBy("No user anna", 7, "ann"));
    EXPECT_FALSE(isFollowedBy("No user ann's key", 7, "ann"));
    EXPECT_FALSE(isFollowedBy("No user ann@x.example with such a right", 7, "ann"));
    EXPECT_FALSE(isFollowedBy("No user", 7, ""));
}

TEST(NamedParty, IsWhoseMailboxIsCalledSo) {
    static constexpr auto kinds = std::to_array<std::string_view>({"user", "mailbox"});
    const std::pair<std::string_view, bool> cases[] = {
        {"550 Mailbox for <ann> unknown", true},
        {"The mailbox of user ann is unknown", true},
        {"The user mailbox for ann unknown", true},
        {"License for ann unknown", false},
        {"Mailbox store for ann unknown", false},
        {"The key of the mailbox for ann unknown", false},
        {"550 for ann unknown", false},
        {"mailbox ann unknown", false},
        {"mailbox of joann unknown", false},
    };
    for (const auto& [text, isOfAnn] : cases) {
        EXPECT_EQ(isSaidOfOwned(text, text.find("unknown"), "ann", kinds), isOfAnn) << text;
    }
}

TEST(NamedParty, IsTheMailboxThatASentenceBeginsWith) {
    static constexpr auto kinds =
        std::to_array<std::string_view>({"cuenta", "cuenta de correo", "адрес"});
    const std::pair<std::string_view, bool> cases[] = {
        {"550 La cuenta no existe", true},
        {"Error: esta cuenta de correo ya no existe", true},
        {"Адрес no existe: адрес", true},
        {"550 5.1.1 адрес no existe", true},
        {"La clave de la cuenta no existe", false},
        {"cuenta del remitente no existe", false},
        {"Subcuenta no existe", false},
        {"cuenta: no existe", true},
        {"550 Адресcuenta no existe", false},
        {"550 La CUENTA  de\r\n correo no existe", true},
        {"no existe", false},
        {"El titular dell'cuenta no existe", false},
        {"El servidor de l'cuenta no existe", false},
        {"550 L'cuenta no existe", true},
        {"Web-cuenta no existe", false},
        {"550-cuenta no existe", true},
        {"Remitente: la cuenta no existe", false},
        {"Error: la cuenta no existe", true},
    };
    for (const auto& [text, isMailbox] : cases) {
        EXPECT_EQ(isSaidOfKind(text, text.find("no existe"), kinds), isMailbox) << text;
    }
}

TEST(NamedParty, IsTheMailboxInFrontOfItsName) {
    static constexpr auto kinds = std::to_array<std::string_view>({"cuenta de correo"});
    const std::pair<std::string_view, bool> cases[] = {
        {"La cuenta de correo <ann> no existe", true},
        {"La clave de la cuenta de correo <ann> no existe", false},
        {"La cuenta de correo no existe", false},
        {"La clave ann no existe", false},
    };
    for (const auto& [text, isMailbox] : cases) {
        EXPECT_EQ(isSaidOfNamedKind(text, text.find("no existe"), "ann", kinds), isMailbox) << text;
    }
}

TEST(NamedParty, IsNobodyElse) {
    static constexpr auto kinds = std::to_array<std::string_view>({"user"});
    const std::pair<std::string_view, bool> cases[] = {
        {"not found", true},
        {"550 5.1.1 not found: ann", true},
        {"Error: not found: ann", true},
        {"The user is not found: ann", true},
        {"Key not found: ann", false},
        {"The key of user not found: ann", false},
    };
    for (const auto& [text, isNobody] : cases) {
        EXPECT_EQ(isSaidOfNothingElse(text, text.find("not found"), kinds), isNobody) << text;
    }
}

TEST(NamedParty, IsWhoseSomethingIs) {
    static constexpr auto kinds = std::to_array<std::string_view>({"mailbox"});
    const std::pair<std::string_view, bool> cases[] = {
        {"The key of the user unknown", true},  {"La clave del user unknown", true},
        {"Le profil de l'user unknown", true},  {"user unknown", false},
        {"550 for user unknown", false},        {"Sorry, the user unknown", false},
        {"No mailbox for user unknown", false}, {"Address of the user unknown", false},
        {"Failed with: user unknown", false},   {"Rejected for user unknown", false},
        {"550 PGP key user unknown", true},     {"Keys user unknown", false},
    };
    for (const auto& [text, isPart] : cases) {
        EXPECT_EQ(isSaidOfPart(text, text.find("user"), kinds), isPart) << text;
    }
}

TEST(NamedParty, IsTheSenderBehindItsName) {
    for (const std::string_view text :
         {"Sender: unknown", "550 From: the unknown", "HELO-unknown", "Host-unknown",
          "Sender address: unknown", "550 login: unknown"}) {
        EXPECT_TRUE(isSaidOfSender(text, text.find("unknown"))) << text;
    }
    for (const std::string_view text :
         {"unknown", "Sender unknown", "550 5.1.1: unknown", "User: unknown", "server: unknown",
          "host - unknown", "Returned to sender: unknown", "Address: unknown"}) {
        EXPECT_FALSE(isSaidOfSender(text, text.find("unknown"))) << text;
    }
}

TEST(NamedParty, EndsASentence) {
    for (const std::string_view text :
         {"no", "no ", "no.", "no here", "no\r\n550 x", "no and no longer"}) {
        EXPECT_TRUE(endsClause(text, 2)) << text;
    }
    for (const std::string_view text :
         {"no in the list", "no (see)", "no at this time", "no and late", "no en este momento",
          "no: /home/ann", "nothing"}) {
        EXPECT_FALSE(endsClause(text, 2)) << text;
    }
}

TEST(NamedParty, IsAHostByItsName) {
    for (const std::string_view text : {"x.example", "mx.x.example?", "at x.example. No"}) {
        EXPECT_TRUE(isNamed(text, "X.example")) << text;
    }
    for (const std::string_view text : {"a@x.example", "ax.example", "x.example.org", ""}) {
        EXPECT_FALSE(isNamed(text, "x.example")) << text;
    }
    EXPECT_FALSE(isNamed("x", ""));
    EXPECT_FALSE(isNamed(std::string(600, 'x'), std::string(300, 'x')));
}

}  // namespace
}  // namespace bouncecheck
