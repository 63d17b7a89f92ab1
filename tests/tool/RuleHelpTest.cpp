#include "tool/RuleHelp.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

#include "bounce/PhraseTables.h"
#include "text/Ascii.h"

namespace bouncecheck {
namespace {

TEST(RuleHelp, KnowsEveryLabelOfTheSourcesAndNoOther) {
    constexpr std::string_view said = "Bounce type";
    std::set<std::string> inSources;
    for (const auto& entry : std::filesystem::directory_iterator(BOUNCE_SOURCES)) {
        if (entry.path().extension() != ".cpp") continue;
        std::ifstream file(entry.path());
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        for (std::size_t at = text.find(said); at != text.npos; at = text.find(said, at)) {
            at = text.find_first_not_of(": ", at + said.size());
            if (at == text.npos || !ascii::isDigit(text[at])) continue;
            inSources.insert(text.substr(at, text.find('"', at) - at));
        }
    }
    std::set<std::string> inTable;
    for (const RuleHelp& rule : ruleHelp()) {
        EXPECT_TRUE(inTable.insert(std::string(rule.label)).second) << rule.label << " twice";
    }
    EXPECT_EQ(inTable, inSources);
}

TEST(RuleHelp, GivesLabelsTheTypesThatSamplesHave) {
    std::ifstream table(SAMPLES_TABLE);
    std::size_t rows = 0;
    for (std::string line; std::getline(table, line);) {
        std::istringstream columns(line);
        std::string file, type, label;
        columns >> file >> type >> label;
        if (label == "-") continue;
        const RuleHelp* rule = helpForLabel(label);
        ASSERT_TRUE(rule) << label;
        EXPECT_EQ(std::to_string(rule->type), type) << label;
        ++rows;
    }
    EXPECT_GT(rows, 100U);
}

TEST(RuleHelp, SaysSomethingAboutEach) {
    for (const RuleHelp& rule : ruleHelp()) {
        EXPECT_FALSE(rule.meaning.empty() || rule.looksFor.empty()) << rule.label;
        EXPECT_FALSE(adviceFor(rule.type, rule.label).empty()) << rule.label;
        for (const std::string_view name : rule.tables) {
            const bool isTable = std::ranges::any_of(
                phraseTables(), [&](const PhraseTable& table) { return table.name == name; });
            EXPECT_TRUE(name.empty() || isTable) << name;
        }
    }
    EXPECT_EQ(adviceFor(99, ""), "");
    EXPECT_NE(adviceFor(6, "6.8a"), adviceFor(6, "6.8"));
}

}  // namespace
}  // namespace bouncecheck
