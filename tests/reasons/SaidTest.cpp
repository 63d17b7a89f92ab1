#include "reasons/Said.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>
#include <utility>

namespace bouncecheck {
namespace {

TEST(Said, IsOfWhoIsCalledSo) {
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
        EXPECT_EQ(Said(text, text.find("unknown")).isOf("ann", kinds), isAnn) << text;
    }
}

TEST(Said, IsOfWhoseMailboxIsCalledSo) {
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
        EXPECT_EQ(Said(text, text.find("unknown")).isOfOwned("ann", kinds), isOfAnn) << text;
    }
}

TEST(Said, IsOfTheMailboxThatASentenceBeginsWith) {
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
        EXPECT_EQ(Said(text, text.find("no existe")).isOfKind(kinds), isMailbox) << text;
    }
}

TEST(Said, IsOfTheMailboxInFrontOfItsName) {
    static constexpr auto kinds = std::to_array<std::string_view>({"cuenta de correo"});
    const std::pair<std::string_view, bool> cases[] = {
        {"La cuenta de correo <ann> no existe", true},
        {"La clave de la cuenta de correo <ann> no existe", false},
        {"La cuenta de correo no existe", false},
        {"La clave ann no existe", false},
    };
    for (const auto& [text, isMailbox] : cases) {
        EXPECT_EQ(Said(text, text.find("no existe")).isOfNamedKind("ann", kinds), isMailbox)
            << text;
    }
}

TEST(Said, IsOfNobodyElse) {
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
        EXPECT_EQ(Said(text, text.find("not found")).isOfNothingElse(kinds), isNobody) << text;
    }
}

TEST(Said, IsOfSomethingOfAMailbox) {
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
        EXPECT_EQ(Said(text, text.find("user")).isOfPart(kinds), isPart) << text;
    }
}

TEST(Said, IsOfTheSenderBehindItsName) {
    for (const std::string_view text :
         {"Sender: unknown", "550 From: the unknown", "HELO-unknown", "Host-unknown",
          "Sender address: unknown", "550 login: unknown"}) {
        EXPECT_TRUE(Said(text, text.find("unknown")).isOfSender()) << text;
    }
    for (const std::string_view text :
         {"unknown", "Sender unknown", "550 5.1.1: unknown", "User: unknown", "server: unknown",
          "host - unknown", "Returned to sender: unknown", "Address: unknown"}) {
        EXPECT_FALSE(Said(text, text.find("unknown")).isOfSender()) << text;
    }
}

}  // namespace
}  // namespace bouncecheck
