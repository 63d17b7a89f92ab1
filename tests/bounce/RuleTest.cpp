#include <bouncecheck/Rule.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include <bouncecheck/PhraseList.h>

namespace bouncecheck {
namespace {

TEST(Rules, SayWhatTheyAreAbout) {
    std::set<std::string_view> labels;
    for (const Rule& rule : allRules()) {
        const std::string_view label = rule.label();
        SCOPED_TRACE(label);
        EXPECT_TRUE(labels.insert(label).second) << "twice";
        EXPECT_EQ(label.substr(0, label.find('.')), std::to_string(rule.type));
        EXPECT_EQ(ruleOf(label), &rule);
        EXPECT_FALSE(rule.meaning.empty());
        EXPECT_FALSE(rule.looksFor.empty());
        EXPECT_FALSE(adviceFor(rule.type, &rule).empty());
        for (const std::string_view name : rule.lists) {
            EXPECT_TRUE(name.empty() ||
                        std::ranges::count(allPhraseLists(), name, &PhraseList::name) == 1)
                << name;
        }
    }
    EXPECT_EQ(ruleOf("99.1"), nullptr);
    EXPECT_EQ(adviceFor(99, nullptr), "");
    EXPECT_NE(adviceFor(6, ruleOf("6.8a")), adviceFor(6, ruleOf("6.8")));
}

}  // namespace
}  // namespace bouncecheck
