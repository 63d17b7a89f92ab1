#include "reasons/TopicWords.h"

#include <gtest/gtest.h>

#include <string_view>

namespace bouncecheck {
namespace {

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
