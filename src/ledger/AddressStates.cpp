#include "ledger/AddressStates.h"

#include <algorithm>
#include <utility>

#include "ledger/RuleSettings.h"

namespace bouncecheck::ledger {
namespace {

Time changeTime(Ledger& ledger, Time now) {
    Statement last(ledger.database(),
                   "SELECT max(changed) FROM addresses WHERE changed IS NOT NULL");
    last.step();
    return std::max(now, last.number(0));
}

}  // namespace

AddressStates::AddressStates(Ledger& ledger, Time now)
    : protection_(ledger),
      rules_(rulesOf(ledger)),
      now_(changeTime(ledger, now)),
      find_(ledger.database(), "SELECT id FROM addresses WHERE key = ?1"),
      last_(ledger.database(), "SELECT max(id) FROM addresses"),
      add_(ledger.database(),
           "INSERT INTO addresses (id, key, written, is_mailbox, state, cause, reason, since, "
           "count, first_seen, last_seen, changed) "
           "VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12)"),
      read_(ledger.database(),
            "SELECT key, is_mailbox, state, cause, reason, since, count, first_seen, last_seen, "
            "coalesce(written, key), "
            "EXISTS (SELECT 1 FROM decisions WHERE address = ?1), "
            "EXISTS (SELECT 1 FROM events WHERE address = ?1 AND bearing = 'unsubscribe'), "
            "EXISTS (SELECT 1 FROM events WHERE address = ?1 AND bearing = 'suppress') "
            "FROM addresses WHERE id = ?1"),
      write_(ledger.database(),
             "UPDATE addresses SET state = ?2, cause = ?3, reason = ?4, since = ?5, count = ?6, "
             "first_seen = ?7, last_seen = ?8, changed = coalesce(?9, changed) WHERE id = ?1"),
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

std::optional<std::int64_t> AddressStates::find(std::string_view key) {
    std::optional<std::int64_t> id;
    if (find_.with(key).step()) id = find_.number(0);
    find_.reset();
    return id;
}

std::int64_t AddressStates::nextId() {
    last_.step();
    const std::int64_t id = last_.number(0) + 1;
    last_.reset();
    return id;
}

void AddressStates::insert(const NewAddress& address, std::span<const ReportedFact> reports) {
    ReportedHistory reported(rules_);
    for (const ReportedFact& fact : reports) reported.add(fact);
    AddressHistory history = reported.history(address.isMailbox);
    const std::string_view pattern = protection_.patternFor(address.key);
    history.isProtected = !pattern.empty();
    const AddressState state = spare(stateOf(history), address.written, pattern);
    const Counted& all = reported.counted();
    add_.with(address.id, address.key,
              address.written == address.key ? std::string_view() : address.written,
              address.isMailbox ? 1 : 0, state.isSuppressed ? "suppressed" : "active",
              orNull(nameOf(state.cause)), orNull(state.reason), state.since, all.count, all.first,
              all.last, state.cause == Cause::none ? std::nullopt : std::optional(now_))
        .run();
}

/// Remembers whom a pattern protects.
AddressState AddressStates::spare(AddressState state, std::string_view address,
                                  std::string_view pattern) {
    if (state.cause == Cause::protection) {
        spared_.push_back({std::string(address), std::string(pattern), state.reason});
    }
    return state;
}

std::optional<ReportSummary> AddressStates::summary(std::int64_t id, Bearing bearing) {
    std::optional<ReportSummary> found;
    if (ends_.with(id, nameOf(bearing)).step()) {
        found = ReportSummary{ends_.number(0), std::string(ends_.text(1))};
    }
    ends_.reset();
    return found;
}

/// Goes from day to day, past all further reports of each.
std::optional<ReportSummary> AddressStates::exhaustion(std::int64_t id) {
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

/// Of the address in the row that was read. Once something decides, the rest is not looked at.
AddressHistory AddressStates::historyOf(std::int64_t id, bool isProtected) {
    AddressHistory history = {.isMailbox = read_.number(1) != 0, .isProtected = isProtected};
    const bool isDecided = read_.number(10) != 0;
    if (isDecided && decision_.with(id).step()) {
        history.decision = decisionNamed(decision_.text(0));
        history.decided = decision_.number(1);
    }
    decision_.reset();
    if (isDecided || !history.isMailbox) return history;
    if (read_.number(11) != 0) {
        history.unsubscribed = summary(id, Bearing::unsubscribe);
    } else if (read_.number(12) != 0) {
        history.suppressed = summary(id, Bearing::suppress);
    } else {
        history.exhausted = exhaustion(id);
    }
    return history;
}

void AddressStates::update(std::int64_t id, const Counted& more) {
    read_.with(id).step();
    const std::string_view pattern = protection_.patternFor(read_.text(0));
    const AddressState state =
        spare(stateOf(historyOf(id, !pattern.empty())), read_.text(9), pattern);
    const bool wasSuppressed = read_.text(2) == "suppressed";
    const bool isOther =
        wasSuppressed != state.isSuppressed || causeNamed(read_.text(3)) != state.cause;
    const bool isSame = !isOther && more.count == 0 && read_.text(4) == state.reason &&
                        read_.optionalNumber(5) == state.since;
    Counted all = {read_.number(6), read_.optionalNumber(7), read_.optionalNumber(8)};
    read_.reset();
    if (isSame) return;
    if (more.count > 0) {
        all = {all.count + more.count, std::min(*more.first, all.first.value_or(*more.first)),
               std::max(*more.last, all.last.value_or(*more.last))};
    }
    write_
        .with(id, state.isSuppressed ? "suppressed" : "active", orNull(nameOf(state.cause)),
              orNull(state.reason), state.since, all.count, all.first, all.last,
              isOther ? std::optional(now_) : std::nullopt)
        .run();
}

}  // namespace bouncecheck::ledger
