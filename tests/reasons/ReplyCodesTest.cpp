#include "reasons/ReplyCodes.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace bouncecheck {
namespace {

TEST(ReplyCodes, AreFoundInReplies) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"550 5.1.1 no", "550 5.1.1"},
        {"550-5.1.1 no\r\n550 5.1.1 no", "550 5.1.1"},
        {"550-192.0.2.1 is listed", "550 "},
        {"550-192.0.2, 550-123-4567, 450-1.2.3", " "},
        {"said: 452 4.2.2 full", "452 4.2.2"},
        {"Sorry. (#5.1.1)", " 5.1.1"},
        {"SMTP error 550", "550 "},
        {"smtp; 554 5.7.1 <a@x.example>", "554 5.7.1"},
        {"250 ok\n550 no", "550 "},
        {"Size (in bytes): 222", " "},
        {"<b>: 250 2.1.5 ok", "250 2.1.5"},
        {"host mx[192.0.2.153] at 5.5.2026, version 4.4.1.2, 550 bytes", " "},
        {"", " "},
    };
    for (const auto& [text, expected] : cases) {
        const ReplyCodes codes = codesIn(text);
        EXPECT_EQ(std::string(codes.reply) + " " + std::string(codes.status), expected) << text;
    }
}

}  // namespace
}  // namespace bouncecheck
