#include <set>
#include <string_view>

#include <bouncecheck/BounceType.h>
#include <bouncecheck/Recipient.h>
#include "tool/ToolRun.h"
#include "tool/output/Fields.h"

namespace bouncecheck {
namespace {

using Names = std::set<std::string>;

/// The options among the words of `text`, which commas and quotes may surround.
void addOptions(std::string text, Names& names) {
    for (char& c : text) {
        if (c == ',' || c == '`') c = ' ';
    }
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        if (word.starts_with('-')) names.insert(word);
    }
}

/// The options that the lines of a page declare: those that begin with `start`, up
/// to `end`.
Names declaredIn(const std::string& page, std::string_view start, std::string_view end) {
    Names names;
    std::istringstream lines(page);
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with(start)) continue;
        const std::size_t from = start.find('-');
        addOptions(line.substr(from, line.find(end, from) - from), names);
    }
    return names;
}

/// The manual page with "--name" for the "Fl \-name" of its source.
std::string manualPage() {
    std::string page = contentOf(PAGES_DIR "/docs/bouncecheck.1");
    for (std::size_t at; (at = page.find("Fl ")) != page.npos;) page.replace(at, 3, "-");
    std::erase(page, '\\');
    return page;
}

TEST(OptionPages, DeclareTheOptionsOfTheHelp) {
    const Names inHelp = declaredIn(run({"--help"}).out, "  -", "  ");
    EXPECT_GT(inHelp.size(), 20U);
    EXPECT_EQ(declaredIn(manualPage(), ".It -", "\n"), inHelp);
    EXPECT_EQ(declaredIn(contentOf(PAGES_DIR "/README.md"), "| `-", "|"), inHelp);
}

TEST(OptionPages, NameEveryFieldVerdictReasonAndAdvice) {
    const std::string page = manualPage();
    const std::string fields = page.substr(page.find(".Sh NAMES OF FIELDS"));
    for (const Field& field : allFields()) {
        EXPECT_NE(fields.find(" " + std::string(field.name) + " "), fields.npos) << field.name;
    }
    for (const VerdictType& type : allVerdictTypes()) {
        const std::string row = std::string(".It ") + bounceTypeName(type.type) + " Ta " +
                                std::to_string(type.type) + " Ta ";
        EXPECT_NE(page.find(row), page.npos) << row;
    }
    const auto isExplained = [&](std::string_view name) {
        return name.empty() || page.find(".It " + std::string(name) + " Ta ") != page.npos;
    };
    for (const ReasonMeaning& row : allReasons()) EXPECT_TRUE(isExplained(row.name)) << row.name;
    for (const AdviceMeaning& row : allAdvices()) EXPECT_TRUE(isExplained(row.name)) << row.name;
}

}  // namespace
}  // namespace bouncecheck
