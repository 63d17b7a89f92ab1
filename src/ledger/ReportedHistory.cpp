#include "ledger/ReportedHistory.h"

#include <algorithm>
#include <string>

namespace bouncecheck::ledger {
namespace {

void extend(std::optional<ReportSummary>& whole, const ReportedFact& fact) {
    if (!whole) whole = ReportSummary{fact.seen, ""};
    whole->lastReason = fact.reason;
}

}  // namespace

std::strong_ordering ReportedFact::operator<=>(const ReportedFact& other) const noexcept {
    if (seen != other.seen) return seen <=> other.seen;
    const bool isSuccess = bearing == Bearing::success;
    const bool isOthersSuccess = other.bearing == Bearing::success;
    if (isSuccess != isOthersSuccess) return isSuccess <=> isOthersSuccess;
    if (reason != other.reason) return reason <=> other.reason;
    return bearing <=> other.bearing;
}

void Counted::add(Time seen) noexcept {
    ++count;
    first = std::min(seen, first.value_or(seen));
    last = std::max(seen, last.value_or(seen));
}

void Counted::add(const Counted& more) noexcept {
    if (more.count == 0) return;
    count += more.count;
    first = std::min(*more.first, first.value_or(*more.first));
    last = std::max(*more.last, last.value_or(*more.last));
}

void ReportedHistory::add(const ReportedFact& fact) {
    if (fact.bearing == Bearing::none) return;
    if (fact.bearing == Bearing::success) return days_.clear();
    counted_.add(fact.seen);
    if (fact.bearing == Bearing::retry) {
        days_.add(fact.seen);
        extend(retries_, fact);
    } else {
        extend(fact.bearing == Bearing::suppress ? suppressed_ : unsubscribed_, fact);
    }
}

AddressHistory ReportedHistory::history(bool isMailbox) const {
    AddressHistory history = {.isMailbox = isMailbox};
    history.suppressed = suppressed_;
    history.unsubscribed = unsubscribed_;
    if (const auto reached = days_.reached()) {
        history.exhausted = ReportSummary{*reached, retries_->lastReason};
    }
    return history;
}

}  // namespace bouncecheck::ledger
