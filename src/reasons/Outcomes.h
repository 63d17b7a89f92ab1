#pragma once

#include <bouncecheck/Outcome.h>

/// What outcomes have in common.
namespace bouncecheck {

/// Whether the mail failed, for good or not, or may have: such an outcome has a reason.
constexpr bool isTrouble(Outcome outcome) noexcept {
    return outcome == Outcome::failed || outcome == Outcome::delayed || outcome == Outcome::unknown;
}

/// Whether the mail was taken: by the mailbox, a list, or a system that sends no reports.
constexpr bool isSuccess(Outcome outcome) noexcept {
    return outcome == Outcome::delivered || outcome == Outcome::relayed ||
           outcome == Outcome::expanded;
}

}  // namespace bouncecheck
