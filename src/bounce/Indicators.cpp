#include "bounce/BounceCheck.h"
#include "bounce/PhraseSearch.h"
#include "text/Ascii.h"

namespace bouncecheck {
namespace {

/// A list without its terminator ends here at the latest.
constexpr std::size_t longestList = 2001;

bool matches(std::int32_t mode, std::string_view text, std::string_view phrase) {
    switch (mode) {
        case RULE_BEGINS_WITH: return text.starts_with(phrase);
        case RULE_BEGINS_WITH_NO_CASE: return ascii::startsWithNoCase(text, phrase);
        case RULE_CONTAINS: return PhraseSearch(text).has(phrase);
        case RULE_CONTAINS_NO_CASE: return PhraseSearch(text).hasNoCase(phrase);
        default: return false;
    }
}

}  // namespace

bool BounceCheck::containsIndicator(const StringBuffer& text, const char* const* list,
                                    StringBuffer& matched) const {
    matched.clear();
    const char* found = PhraseSearch(text).firstOf(list, LetterCase::ignored, longestList);
    matched.append(found);
    return found != nullptr;
}

const StringBuffer* BounceCheck::textOf(std::int32_t ruleSource) const noexcept {
    switch (ruleSource) {
        case RULE_SUBJECT: return &m_sbSubject;
        case RULE_BOUNCE_DATA: return &m_sbBounceData;
        case RULE_FROM_NAME: return &m_sbFromName;
        case RULE_FROM_ADDR: return &m_sbFromAddr;
        default: return nullptr;
    }
}

int BounceCheck::applyRules(const BounceRule* rules, int& ruleIndex, LogBase&) const {
    ruleIndex = 0;
    for (int i = 0; rules[i].source != RULE_END; ++i) {
        const StringBuffer* text = textOf(rules[i].source);
        if (!text) continue;
        ruleIndex = i;
        if (matches(rules[i].mode, text->view(), ascii::viewOf(rules[i].phrase))) {
            return rules[i].bounceType;
        }
    }
    ruleIndex = 0;
    return BOUNCE_NONE;
}

}  // namespace bouncecheck
