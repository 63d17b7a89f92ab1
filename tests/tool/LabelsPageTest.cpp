#include "pages/LabelsPage.h"

#include "tool/RuleHelp.h"
#include "tool/ToolRun.h"

namespace bouncecheck {
namespace {

TEST(LabelsPage, IsAsTheTablesHaveIt) {
    EXPECT_EQ(contentOf(PAGES_DIR "/docs/labels.md"), labelsPage())
        << "make it again: cmake --build --preset test --target labels_page";
}

TEST(LabelsPage, TheirOrderIsToldOfEachLabel) {
    const std::string order = contentOf(PAGES_DIR "/docs/verdicts.md");
    for (const RuleHelp& rule : ruleHelp()) {
        const std::string label(rule.label);
        EXPECT_NE(order.find(" " + label), std::string::npos) << label;
    }
}

}  // namespace
}  // namespace bouncecheck
