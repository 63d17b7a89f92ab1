#include "pages/MadePages.h"

#include <bouncecheck/Rule.h>
#include "tool/ToolRun.h"

namespace bouncecheck {
namespace {

TEST(TablePages, AreAsTheTablesHaveThem) {
    for (const MadePage& made : madePages()) {
        EXPECT_EQ(contentOf(PAGES_DIR "/docs/" + made.file), made.text)
            << made.file << ": make it again: cmake --build --preset test --target pages";
    }
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
