#include "reasons/NamedHost.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace bouncecheck {
namespace {

TEST(NamedHost, IsKnownByItsAddress) {
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

TEST(NamedHost, IsKnownByItsName) {
    for (const std::string_view text : {"x.example", "mx.x.example?", "at x.example. No"}) {
        EXPECT_TRUE(isHostNamed(text, "X.example")) << text;
    }
    for (const std::string_view text : {"a@x.example", "ax.example", "x.example.org", ""}) {
        EXPECT_FALSE(isHostNamed(text, "x.example")) << text;
    }
    EXPECT_FALSE(isHostNamed("x", ""));
    EXPECT_FALSE(isHostNamed(std::string(600, 'x'), std::string(300, 'x')));
}

}  // namespace
}  // namespace bouncecheck
