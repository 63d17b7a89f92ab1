#include "ledger/MessageDigest.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace bouncecheck::ledger {
namespace {

constexpr std::string_view plain =
    "Received: from mx.example.net\nMessage-ID: <1@example.net>\nFrom: a@example.net\n"
    "Subject: It failed,\n and why\n\nHello.\nFrom here on it is quoted.\n\nBye.\n";

std::string changed(std::string_view from, std::string_view to) {
    std::string text(plain);
    return text.replace(text.find(from), from.size(), to);
}

std::string withCrlf() {
    std::string text(plain);
    for (std::size_t at = 0; (at = text.find('\n', at)) != text.npos; at += 2)
        text.insert(at, "\r");
    return text;
}

TEST(MessageDigest, IsThatOfEveryCopy) {
    const std::string copies[] = {
        withCrlf(),
        std::string(plain) + "\n\n",
        std::string(plain.substr(0, plain.size() - 1)),
        "From MAILER-DAEMON Thu Sep 18 17:54:04 2008\n" + std::string(plain),
        "\xEF\xBB\xBF\n" + std::string(plain),
        "Return-Path: <>\nDelivered-To: bounces@example.org\n" + std::string(plain),
        "Status: RO\nX-UID: 7\n" + std::string(plain),
        changed("Received: from mx.example.net\n", ""),
        changed("\nFrom here", "\n>From here"),
        changed("\nFrom here", "\n>>From here"),
        changed(",\n and", ",\n\tand"),
        changed(",\n and", ", and"),
        changed("Message-ID: ", "message-id:"),
    };
    for (const std::string& copy : copies) EXPECT_EQ(digestOf(copy), digestOf(plain)) << copy;
}

TEST(MessageDigest, IsAnotherOfAnotherMessage) {
    const std::string others[] = {
        "",
        changed("1@example", "2@example"),
        changed("a@example", "b@example"),
        changed("It failed", "It worked"),
        changed("Bye", "Bye!"),
        changed("\n\nHello", "\n\n\nHello"),
        changed("\n\nHello", "\nDate: x\n\nHello"),
        changed("\n\nHello", "\nTo: x\n\nHello"),
        changed("\n\nHello", "\nContent-Type: x\n\nHello"),
        changed("\n\nHello", "\nX-Failed-Recipients: a@x.example\n\nHello"),
        changed("\n\nHello.", "\n Hello."),
        changed("a@example.net\nSubject:", "a@example.net Subject:"),
    };
    for (const std::string& other : others) EXPECT_NE(digestOf(other), digestOf(plain)) << other;
}

TEST(MessageDigest, TellsMessagesThatNothingIdentifies) {
    const std::string_view all[] = {"",
                                    "a",
                                    "b",
                                    "x",
                                    "X-Failed-Recipients: a@example.org\n\nSorry.",
                                    "X-Failed-Recipients: b@example.org\n\nSorry.",
                                    "X-Failed-Recipients: a@example.org\n\nSorry!",
                                    "\n\nSorry.\n"};
    for (const std::string_view& one : all) {
        for (const std::string_view& other : all) {
            EXPECT_EQ(digestOf(one) == digestOf(other), &one == &other) << one << " / " << other;
        }
    }
}

TEST(MessageDigest, OfTheHeaderIsNotThatOfAnEmptyBody) {
    constexpr std::string_view header = "Message-ID: <1@example.net>\n\n";
    EXPECT_EQ(digestOfHeader(header), digestOfHeader(std::string(header) + "text"));
    EXPECT_NE(digestOfHeader(header), digestOf(header));
    EXPECT_NE(digestOfHeader(header), digestOfHeader("Message-ID: <2@example.net>\n\n"));
}

}  // namespace
}  // namespace bouncecheck::ledger
