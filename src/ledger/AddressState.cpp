#include "ledger/AddressState.h"

namespace bouncecheck::ledger {
namespace {

AddressState suppressedBy(Cause cause, const ReportSummary& reports) {
    return {true, cause, reports.lastReason, reports.first};
}

AddressState reportedState(const AddressHistory& history) {
    if (!history.isMailbox) return {};
    if (history.unsubscribed) return suppressedBy(Cause::unsubscribe, *history.unsubscribed);
    if (history.suppressed) return suppressedBy(Cause::suppress, *history.suppressed);
    if (history.exhausted) return suppressedBy(Cause::retry, *history.exhausted);
    return {};
}

}  // namespace

void RetryDays::add(Time seen) {
    const std::int64_t day = seen / secondsPerDay;
    if (!days_.empty() && days_.back() == day) return;
    days_.push_back(day);
    while (days_.front() <= day - rules_.within) days_.pop_front();
    if (!reached_ && static_cast<std::int64_t>(days_.size()) >= rules_.after) reached_ = seen;
    if (static_cast<std::int64_t>(days_.size()) > rules_.after) days_.pop_front();
}

void RetryDays::clear() {
    days_.clear();
    reached_.reset();
}

AddressState stateOf(const AddressHistory& history) {
    AddressState state = reportedState(history);
    if (history.decision == Decision::allow) {
        state = {false, Cause::allow, "", history.decided};
    } else if (history.decision == Decision::deny) {
        state = {true, Cause::deny, "", history.decided};
    }
    if (state.isSuppressed && history.isProtected) {
        state.isSuppressed = false;
        state.cause = Cause::protection;
    }
    return state;
}

}  // namespace bouncecheck::ledger
