#include "pages/LabelsPage.h"

#include <algorithm>
#include <string_view>

#include "bounce/BounceType.h"
#include "bounce/PhraseTables.h"
#include "tool/RuleHelp.h"

namespace bouncecheck {
namespace {

constexpr std::string_view introduction = R"(# Verdicts and labels

What each verdict and each label means, what the rule behind it looks for, and what
to do about it. `bouncecheck --explain` tells the same of a message at hand;
[verdicts.md](verdicts.md) tells in which order the rules are tried.

The phrases of a table that is named here are printed by

    bouncecheck --list-phrases | grep MailboxFullIndicators

This page is made from the tables of the code:
`cmake --build --preset test --target labels_page`.
)";

constexpr std::string_view withoutLabel = R"(
## Without a label

When no rule above decides a text of bounces, this table does; its rows are tried
from top to bottom.

| where | | phrase | verdict |
|---|---|---|---|
)";

/// `text` for a cell: what would end it, or begin markup, stands as it is.
std::string cell(std::string_view text) {
    std::string out;
    for (const char c : text) {
        if (c == '|' || c == '*' || c == '_' || c == '<') out += '\\';
        out += c;
    }
    return out;
}

std::string code(std::string_view text) { return "`" + std::string(text) + "`"; }

std::string capitalized(std::string_view text) {
    std::string out(text);
    if (!out.empty() && out.front() >= 'a' && out.front() <= 'z') out.front() -= 'a' - 'A';
    return out;
}

std::string tableNames(const RuleHelp& rule) {
    std::string names;
    for (const std::string_view name : rule.tables) {
        if (name.empty()) continue;
        names += (names.empty() ? " (" : ", ") + code(name);
    }
    return names.empty() ? names : names + ")";
}

std::string rowOf(const RuleHelp& rule) {
    return "| " + std::string(rule.label) + " | " + cell(rule.meaning) + " | " +
           cell(rule.looksFor) + tableNames(rule) + " | " + cell(rule.advice) + " |\n";
}

std::string sectionOf(const TypeHelp& type) {
    std::string section = "\n## " + std::to_string(type.type) + " " + bounceTypeName(type.type) +
                          "\n\n" + capitalized(type.meaning) + ".\n\n**What to do:** " +
                          std::string(type.advice) + "\n";
    const auto isOfType = [&](const RuleHelp& rule) { return rule.type == type.type; };
    if (std::ranges::none_of(ruleHelp(), isOfType)) return section;
    section += "\n| label | means | looks for | what to do instead |\n|---|---|---|---|\n";
    for (const RuleHelp& rule : ruleHelp()) {
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
    for (const TypeHelp& type : typeHelp()) page += sectionOf(type);
    page += withoutLabel;
    for (const BounceRule& rule : ruleTable()) page += rowOf(rule);
    return page;
}

}  // namespace bouncecheck
