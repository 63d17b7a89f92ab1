#include "recipients/NamedParty.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>
#include <utility>

#include "recipients/TopicWords.h"

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
        {"550 5.1.1 Ann unknown", true},
        {"550 User \"ann\" is unknown", true},
        {"the user <ann> unknown", true},
        {"Sender ann unknown", false},
        {"user ann: the host unknown", false},
        {"user joann unknown", false},
        {"unknown", false},
    };
    for (const auto& [text, isAnn] : cases) {
        EXPECT_EQ(isSaidOf(text, text.find("unknown"), "ann", kinds), isAnn) << text;
    }
    EXPECT_TRUE(isFollowedBy("No user <Ann@x.example>", 7, "ann"));
    EXPECT_FALSE(isFollowedBy("No user anna", 7, "ann"));
    EXPECT_FALSE(isFollowedBy("No user", 7, ""));
}

TEST(TopicWords, AreNoPartsOfNames) {
    for (const std::string_view text :
         {"no", "see spf.x.example", "https://x.example/spf", "a@spf", "spf_check", "antispf"}) {
        EXPECT_FALSE(topicOf(text)) << text;
    }
    EXPECT_EQ(topicOf("spam, RBL/SPF.")->row.phrase, "spf");
    EXPECT_EQ(topicOf("spam, RBL/SPF.")->at, 10U);
}

}  // namespace
}  // namespace bouncecheck
