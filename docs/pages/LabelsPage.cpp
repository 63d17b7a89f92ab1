#include "pages/LabelsPage.h"

#include <algorithm>
#include <string_view>

#include <bouncecheck/BounceType.h>
#include <bouncecheck/Rule.h>
#include "bounce/LastResort.h"
#include "pages/Markdown.h"

namespace bouncecheck {
namespace {

constexpr std::string_view introduction = R"(# Verdicts and labels

What each verdict and each label means, what the rule behind it looks for, and what
to do about it. `bouncecheck --explain` prints the same for a message at hand;
[verdicts.md](verdicts.md) describes in which order the rules are tried. What to do about
each recipient of a message depends on its reason: see [reasons.md](reasons.md).

The phrases of a table that is named here are printed by

    bouncecheck --list-phrases | grep MailboxFullIndicators

This page is made from the tables of the code:
`cmake --build --preset test --target pages`.
)";

constexpr std::string_view withoutLabel = R"(
## Without a label

When no rule above decides a text of bounces, this table does; its rows are tried
from top to bottom.

| where | | phrase | verdict |
|---|---|---|---|
)";

std::string capitalized(std::string_view text) {
    std::string out(text);
    if (!out.empty() && out.front() >= 'a' && out.front() <= 'z') out.front() -= 'a' - 'A';
    return out;
}

std::string tableNames(const Rule& rule) {
    std::string names;
    for (const std::string_view name : rule.lists) {
        if (name.empty()) continue;
        names += (names.empty() ? " (" : ", ") + code(name);
    }
    return names.empty() ? names : names + ")";
}

std::string rowOf(const Rule& rule) {
    return "| " + std::string(rule.label()) + " | " + cell(rule.meaning) + " | " +
           cell(rule.looksFor) + tableNames(rule) + " | " + cell(rule.advice) + " |\n";
}

std::string sectionOf(const VerdictType& type) {
    std::string section = "\n## " + std::to_string(type.type) + " " + bounceTypeName(type.type) +
                          "\n\n" + capitalized(type.meaning) + ".\n\n**What to do:** " +
                          std::string(type.advice) + "\n";
    const auto isOfType = [&](const Rule& rule) { return rule.type == type.type; };
    if (std::ranges::none_of(allRules(), isOfType)) return section;
    section += "\n| label | means | looks for | what to do instead |\n|---|---|---|---|\n";
    for (const Rule& rule : allRules()) {
        if (isOfType(rule)) section += rowOf(rule);
    }
    return section;
}

std::string_view placeOf(const BounceRule& rule) noexcept {
    switch (rule.source) {
        case RULE_SUBJECT: return "subject";
        case RULE_BOUNCE_DATA: return "text";
        case RULE_FROM_NAME: return "sender's name";
        case RULE_FROM_ADDR: return "sender's address";
        default: return "";
    }
}

std::string_view modeOf(const BounceRule& rule) noexcept {
    switch (rule.mode) {
        case RULE_BEGINS_WITH: return "begins with, in this case,";
        case RULE_BEGINS_WITH_NO_CASE: return "begins with";
        case RULE_CONTAINS: return "has, in this case,";
        case RULE_CONTAINS_NO_CASE: return "has";
        default: return "";
    }
}

std::string rowOf(const BounceRule& rule) {
    return "| " + std::string(placeOf(rule)) + " | " + std::string(modeOf(rule)) + " | " +
           code(rule.phrase) + " | " + bounceTypeName(rule.bounceType) + " |\n";
}

}  // namespace

std::string labelsPage() {
    std::string page(introduction);
    for (const VerdictType& type : allVerdictTypes()) page += sectionOf(type);
    page += withoutLabel;
    for (const BounceRule& rule : lastResortRules()) page += rowOf(rule);
    return page;
}

}  // namespace bouncecheck
