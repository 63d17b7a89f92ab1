#include "reasons/AdviceFor.h"

#include <algorithm>

#include "reasons/tables/Advices.h"
#include "text/Ascii.h"

namespace bouncecheck {
namespace {

static_assert(std::ranges::is_sorted(adviceMeanings, {}, &AdviceMeaning::advice) &&
              std::size(adviceMeanings) == static_cast<std::size_t>(Advice::fix) + 1);

Advice adviceOnFailure(const ReasonFinding& finding) noexcept {
    switch (finding.reason) {
        case Reason::none: return Advice::none;
        case Reason::unknownMailbox:
        case Reason::unknownDomain:
            return finding.isSure && !finding.isTransient ? Advice::suppress : Advice::retry;
        case Reason::inactiveMailbox:
            // The code alone is given to mailboxes that are closed for a while, too.
            return finding.isSure && !finding.isTransient && finding.basis == ReasonBasis::phrase
                       ? Advice::suppress
                       : Advice::retry;
        case Reason::messageTooLarge:
        case Reason::content:
        case Reason::authentication:
        case Reason::reputation:
        case Reason::policy: return Advice::fix;
        case Reason::mailboxFull:
        case Reason::rateLimit:
        case Reason::unreachable:
        case Reason::expired:
        case Reason::system:
        case Reason::other: break;
    }
    return Advice::retry;
}

}  // namespace

std::span<const AdviceMeaning> allAdvices() noexcept { return adviceMeanings; }

std::string_view nameOf(Advice advice) noexcept {
    const auto row = static_cast<std::size_t>(advice);
    return row < std::size(adviceMeanings) ? adviceMeanings[row].name : std::string_view();
}

std::optional<Advice> adviceNamed(std::string_view name) noexcept {
    for (const AdviceMeaning& row : adviceMeanings) {
        if (ascii::equalsNoCase(name, row.name)) return row.advice;
    }
    return std::nullopt;
}

Advice adviceFor(Outcome outcome, const ReasonFinding& finding) noexcept {
    switch (outcome) {
        case Outcome::failed: return adviceOnFailure(finding);
        case Outcome::unknown:
        case Outcome::delayed: {
            const Advice advice = adviceOnFailure(finding);
            return advice == Advice::fix ? advice : Advice::retry;
        }
        case Outcome::complained: return Advice::unsubscribe;
        case Outcome::delivered:
        case Outcome::relayed:
        case Outcome::expanded:
        case Outcome::displayed: break;
    }
    return Advice::none;
}

}  // namespace bouncecheck
