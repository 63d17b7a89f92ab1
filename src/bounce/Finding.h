#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include <bouncecheck/BounceRule.h>
#include <bouncecheck/BounceType.h>
#include <bouncecheck/LogBase.h>
#include <bouncecheck/Verdict.h>
#include <bouncecheck/classes/StringBuffer.h>
#include "bounce/tables/Rules.h"

namespace bouncecheck {

namespace mistakes {
// Never defined: a call from a constant expression is the compiler's error message.
void noRuleHasThisLabel();
}  // namespace mistakes

/// A rule, by its label. Any other label does not compile.
class RuleId {
public:
    consteval RuleId(const char* label) {
        while (index_ < std::size(ruleTable) && ruleTable[index_].label() != label) ++index_;
        if (index_ == std::size(ruleTable)) mistakes::noRuleHasThisLabel();
    }
    constexpr const Rule& rule() const noexcept { return ruleTable[index_]; }

private:
    std::size_t index_ = 0;
};

/// The address that failed or answered.
struct FoundAddress {
    StringBuffer text;
    AddressSource source = AddressSource::none;
    /// The row of BounceDataMarkers that it stands behind.
    std::optional<std::size_t> marker;

    void set(std::string_view address, AddressSource from) {
        text.setString(address);
        source = from;
        marker.reset();
    }
    void clear() {
        text.clear();
        source = AddressSource::none;
        marker.reset();
    }
    bool isEmpty() const noexcept { return text.isEmpty(); }
};

/// What the checks of one message have found so far; in the end, the verdict.
struct Finding {
    /// The rule that has decided; null when none has, or a row of BounceRules.
    const Rule* rule = nullptr;
    const BounceRule* lastResort = nullptr;
    /// The phrase by which it decided.
    Match match;
    /// The pattern of the subject or the sender that led to the text.
    Match pattern;
    FoundAddress address;
    /// What was decided upon, in place of the text that was loaded.
    std::optional<StringBuffer> text;

    /// Logs the line that names the deciding rule; then the verdict is its type.
    BounceType decide(RuleId by, LogBase& log, const Match& because = {}) {
        rule = &by.rule();
        lastResort = nullptr;
        match = because;
        log.LogInfo(rule->line);
        return rule->type;
    }
    /// The same, behind a line with the phrase.
    BounceType decideLogged(RuleId by, LogBase& log, const Match& because) {
        log.LogData("matchedIndicator", because.phrase);
        return decide(by, log, because);
    }
};

}  // namespace bouncecheck
