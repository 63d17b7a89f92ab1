#include "pages/LabelsPage.h"

#include <bouncecheck/Rule.h>
#include "pages/Completions.h"
#include "pages/ReasonsPage.h"
#include "tool/ToolRun.h"

namespace bouncecheck {
namespace {

TEST(TablePages, AreAsTheTablesHaveThem) {
    constexpr const char* again = "make it again: cmake --build --preset test --target pages";
    EXPECT_EQ(contentOf(PAGES_DIR "/docs/labels.md"), labelsPage()) << again;
    EXPECT_EQ(contentOf(PAGES_DIR "/docs/reasons.md"), reasonsPage()) << again;
    const std::string completions = PAGES_DIR "/docs/completions/";
    EXPECT_EQ(contentOf(completions + "bouncecheck.bash"), bashCompletion()) << again;
    EXPECT_EQ(contentOf(completions + "_bouncecheck"), zshCompletion()) << again;
    EXPECT_EQ(contentOf(completions + "bouncecheck.fish"), fishCompletion()) << again;
}

TEST(TablePages, VerdictsNamesEachLabelInItsOrder) {
    const std::string order = contentOf(PAGES_DIR "/docs/verdicts.md");
    for (const Rule& rule : allRules()) {
        const std::string label(rule.label());
        EXPECT_NE(order.find(" " + label), std::string::npos) << label;
    }
}

}  // namespace
}  // namespace bouncecheck
