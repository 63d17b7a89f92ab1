#include "ledger/Timeline.h"

#include <algorithm>

namespace bouncecheck::ledger {
namespace {

bool isSuppressed(const std::vector<Time>& changes) noexcept { return changes.size() % 2 != 0; }

/// Drops what happened at `time` or later.
void cutFrom(std::vector<Time>& changes, Time time) {
    changes.erase(std::ranges::lower_bound(changes, time), changes.end());
}

}  // namespace

void Timeline::addReport(Bearing bearing, Time seen) {
    switch (bearing) {
        case Bearing::none: break;
        case Bearing::retry: retries_.push_back(seen); break;
        case Bearing::success: successes_.push_back(seen); break;
        case Bearing::suppress:
        case Bearing::unsubscribe: gone_ = std::min(seen, gone_.value_or(seen)); break;
    }
}

void Timeline::addDecision(Decision decision, Time made) {
    decisions_.push_back({decision == Decision::deny, made});
}

/// Of several reports at one time, a success is the last.
void Timeline::applyRetries(std::vector<Time>& changes) const {
    RetryDays days(rules_);
    auto success = successes_.begin();
    const auto end = [&](Time time) {
        days.clear();
        if (isSuppressed(changes)) changes.push_back(time);
    };
    for (const Time seen : retries_) {
        for (; success != successes_.end() && *success < seen; ++success) end(*success);
        if (days.reached()) continue;
        days.add(seen);
        if (days.reached()) changes.push_back(seen);
    }
    for (; success != successes_.end(); ++success) end(*success);
}

void Timeline::applyReports(std::vector<Time>& changes) const {
    if (!isMailbox_) return;
    applyRetries(changes);
    if (!gone_) return;
    // Nothing that is reported undoes it.
    cutFrom(changes, *gone_);
    if (!isSuppressed(changes)) changes.push_back(*gone_);
}

std::vector<Time> Timeline::changes() const {
    std::vector<Time> changes;
    applyReports(changes);
    Time latest = 0;
    for (const Decided& decision : decisions_) {
        // By a clock that goes back, the later decision holds all the same.
        latest = std::max(latest, decision.made);
        cutFrom(changes, latest);
        if (isSuppressed(changes) != decision.isSuppressed) changes.push_back(latest);
    }
    return changes;
}

}  // namespace bouncecheck::ledger
