#include "bounce/LastResort.h"

#include "bounce/Checks.h"
#include "bounce/tables/BounceRules.h"
#include "text/Ascii.h"

namespace bouncecheck {

bool matches(const BounceRule& rule, std::string_view text) {
    const std::string_view phrase = ascii::viewOf(rule.phrase);
    switch (rule.mode) {
        case RULE_BEGINS_WITH: return text.starts_with(phrase);
        case RULE_BEGINS_WITH_NO_CASE: return ascii::startsWithNoCase(text, phrase);
        case RULE_CONTAINS: return contains(text, phrase);
        case RULE_CONTAINS_NO_CASE: return containsNoCase(text, phrase);
        default: return false;
    }
}

std::span<const BounceRule> lastResortRules() noexcept {
    return std::span(BounceRules).first(std::size(BounceRules) - 1);
}

namespace checks {
namespace {

const ScannedText* textFor(const BounceRule& rule, const Evidence& evidence) noexcept {
    switch (rule.source) {
        case RULE_SUBJECT: return &evidence.subject;
        case RULE_BOUNCE_DATA: return &evidence.data;
        case RULE_FROM_NAME: return &evidence.senderName;
        case RULE_FROM_ADDR: return &evidence.senderAddress;
        default: return nullptr;
    }
}

}  // namespace

int lastResort(const Evidence& evidence, Finding& finding) {
    const auto rules = lastResortRules();
    for (std::size_t i = 0; i < rules.size(); ++i) {
        const ScannedText* const text = textFor(rules[i], evidence);
        if (!text || !text->mayHaveRulePhrase(i) || !matches(rules[i], text->view())) continue;
        finding.rule = nullptr;
        finding.lastResort = &rules[i];
        finding.match = {"BounceRules", i, rules[i].phrase, text->kind()};
        return rules[i].bounceType;
    }
    return BOUNCE_NONE;
}

}  // namespace checks
}  // namespace bouncecheck
