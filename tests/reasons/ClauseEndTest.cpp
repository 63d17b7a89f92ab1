#include "reasons/ClauseEnd.h"

#include <gtest/gtest.h>

#include <string_view>

namespace bouncecheck {
namespace {

TEST(ClauseEnd, EndsASentence) {
    for (const std::string_view text : {"no", "no ", "no.", "no here", "no\r\n550 x",
                                        "no and no longer", "no and no\r\n longer"}) {
        EXPECT_TRUE(endsClause(text, 2)) << text;
    }
    for (const std::string_view text :
         {"no in the list", "no (see)", "no at this time", "no and late", "no en este momento",
          "no\n such key", "no: /home/ann", "nothing"}) {
        EXPECT_FALSE(endsClause(text, 2)) << text;
    }
}

TEST(ClauseEnd, MayBeAName) {
    EXPECT_TRUE(isFollowedBy("No user <Ann@x.example>", 7, "ann"));
    EXPECT_TRUE(isFollowedBy("No user ann here", 7, "ann"));
    EXPECT_FALSE(isFollowedBy("No user anna", 7, "ann"));
    EXPECT_FALSE(isFollowedBy("No user ann's key", 7, "ann"));
    EXPECT_FALSE(isFollowedBy("No user ann@x.example with such a right", 7, "ann"));
    EXPECT_FALSE(isFollowedBy("No user", 7, ""));
}

}  // namespace
}  // namespace bouncecheck
