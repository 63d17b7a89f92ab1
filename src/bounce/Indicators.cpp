#include "bounce/BounceCheck.h"
#include "bounce/tables/BounceRules.h"
#include "text/Ascii.h"

namespace bouncecheck {
namespace {

/// A list without its terminator ends here at the latest.
constexpr std::size_t longestList = 2001;

}  // namespace

TextScan* BounceCheck::scanOf(const StringBuffer& text) const noexcept {
    if (&text == &m_sbBounceData) return &m_dataScan;
    if (&text == &m_sbSubject) return &m_subjectScan;
    if (&text == &m_sbFromAddr) return &m_fromAddrScan;
    if (&text == &m_sbFromName) return &m_fromNameScan;
    return nullptr;
}

/// Whether `text` is the bounce data or one of the bodies that it begins or ends
/// with.
bool BounceCheck::isPartOfBounceData(std::string_view text) const noexcept {
    const std::string_view data = m_sbBounceData.view();
    return data.starts_with(text) || data.ends_with(text);
}

bool BounceCheck::containsIndicator(const StringBuffer& text, const char* const* list,
                                    StringBuffer& matched) const {
    matched.clear();  // before the pass, since it may be `text`
    TextScan* known = scanOf(text);
    if (known) return findIndicator(known->phrases(), list, matched);
    // What stands nowhere in the bounce data stands in no part of it.
    if (isPartOfBounceData(text.view()) && !findIndicator(dataPhrases(), list, matched)) {
        return false;
    }
    return findIndicator(PhraseScan(text.view()), list, matched);
}

bool BounceCheck::findIndicator(const PhraseScan& phrases, const char* const* list,
                                StringBuffer& matched) const {
    matched.clear();
    const char* found = phrases.firstOf(list, LetterCase::ignored, longestList);
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

bool BounceCheck::matches(const BounceRule& rule, const StringBuffer& text) const {
    const std::string_view phrase = ascii::viewOf(rule.phrase);
    switch (rule.mode) {
        case RULE_BEGINS_WITH: return text.view().starts_with(phrase);
        case RULE_BEGINS_WITH_NO_CASE: return ascii::startsWithNoCase(text.view(), phrase);
        case RULE_CONTAINS: return contains(text.view(), phrase);
        case RULE_CONTAINS_NO_CASE: return containsNoCase(text.view(), phrase);
        default: return false;
    }
}

int BounceCheck::applyRules(const BounceRule* rules, int& ruleIndex, LogBase&) const {
    ruleIndex = 0;
    for (int i = 0; rules[i].source != RULE_END; ++i) {
        const StringBuffer* text = textOf(rules[i].source);
        if (!text) continue;
        ruleIndex = i;
        // A phrase of the program's own table that stands nowhere in the text
        // matches in no mode.
        const bool isOwn = rules == BounceRules;
        if (isOwn && !scanOf(*text)->phrases().mayHaveRulePhrase(static_cast<std::size_t>(i)))
            continue;
        if (matches(rules[i], *text)) return rules[i].bounceType;
    }
    ruleIndex = 0;
    return BOUNCE_NONE;
}

}  // namespace bouncecheck
