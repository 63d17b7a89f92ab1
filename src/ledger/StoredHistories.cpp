#include "ledger/StoredHistories.h"

#include <string>

namespace bouncecheck::ledger {

StoredHistories::StoredHistories(Ledger& ledger, const Rules& rules)
    : rules_(rules),
      known_(ledger.database(),
             "SELECT EXISTS (SELECT 1 FROM decisions WHERE address = ?1), "
             "EXISTS (SELECT 1 FROM events WHERE address = ?1 AND bearing = 'unsubscribe'), "
             "EXISTS (SELECT 1 FROM events WHERE address = ?1 AND bearing = 'suppress')"),
      decision_(ledger.database(),
                "SELECT decision, made FROM decisions WHERE address = ?1 ORDER BY id DESC LIMIT 1"),
      ends_(ledger.database(),
            "SELECT (SELECT seen FROM events WHERE address = ?1 AND bearing = ?2 "
            "ORDER BY seen LIMIT 1), reason FROM events WHERE address = ?1 AND bearing = ?2 "
            "ORDER BY seen DESC, reason DESC LIMIT 1"),
      lastSuccess_(ledger.database(),
                   "SELECT max(seen) FROM events WHERE address = ?1 AND bearing = 'success'"),
      nextRetry_(ledger.database(),
                 "SELECT seen FROM events WHERE address = ?1 AND bearing = 'retry' "
                 "AND seen >= ?2 ORDER BY seen LIMIT 1") {}

AddressHistory StoredHistories::of(std::int64_t id, bool isMailbox) {
    AddressHistory history = {.isMailbox = isMailbox};
    known_.with(id).step();
    const bool isDecided = known_.number(0) != 0;
    const bool isUnsubscribed = known_.number(1) != 0;
    const bool isGone = known_.number(2) != 0;
    known_.reset();
    if (isDecided && decision_.with(id).step()) {
        history.decision = decisionNamed(decision_.text(0));
        history.decided = decision_.number(1);
    }
    decision_.reset();
    if (isDecided || !isMailbox) return history;
    if (isUnsubscribed) {
        history.unsubscribed = summary(id, Bearing::unsubscribe);
    } else if (isGone) {
        history.suppressed = summary(id, Bearing::suppress);
    } else {
        history.exhausted = exhaustion(id);
    }
    return history;
}

std::optional<ReportSummary> StoredHistories::summary(std::int64_t id, Bearing bearing) {
    std::optional<ReportSummary> found;
    if (ends_.with(id, nameOf(bearing)).step()) {
        found = ReportSummary{ends_.number(0), std::string(ends_.text(1))};
    }
    ends_.reset();
    return found;
}

/// Goes from day to day, past all further reports of each.
std::optional<ReportSummary> StoredHistories::exhaustion(std::int64_t id) {
    std::optional<ReportSummary> found = summary(id, Bearing::retry);
    if (!found) return found;
    lastSuccess_.with(id).step();
    const auto success = lastSuccess_.optionalNumber(0);
    lastSuccess_.reset();
    RetryDays days(rules_);
    Time from = success ? *success + 1 : found->first;
    while (!days.reached() && nextRetry_.with(id, from).step()) {
        const Time seen = nextRetry_.number(0);
        days.add(seen);
        from = (seen / secondsPerDay + 1) * secondsPerDay;
    }
    nextRetry_.reset();
    if (!days.reached()) return std::nullopt;
    found->first = *days.reached();
    return found;
}

}  // namespace bouncecheck::ledger
