#include "ledger/AddressStates.h"

#include <algorithm>
#include <utility>

#include "ledger/AddressKey.h"

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
      find_(ledger.database(), "SELECT id, is_mailbox FROM addresses WHERE key = ?1"),
      add_(ledger.database(),
           "INSERT INTO addresses (key, written, is_mailbox, state, count) "
           "VALUES (?1, nullif(?2, ?1), ?3, 'active', 0)"),
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
                 "AND seen >= ?2 ORDER BY seen LIMIT 1"),
      database_(ledger.database()) {}

std::int64_t AddressStates::idOf(std::string_view address, bool isMailbox) {
    const std::string key = keyOf(address);
    if (find_.with(key).step()) {
        const std::int64_t id = find_.number(0);
        find_.reset();
        return id;
    }
    find_.reset();
    add_.with(key, address, isMailbox ? 1 : 0).run();
    return database_.lastRow();
}

std::optional<Bearing> AddressStates::bearing(std::int64_t id, std::string_view name) {
    std::optional<Bearing> found;
    if (ends_.with(id, name).step()) {
        found = Bearing{ends_.number(0), std::string(ends_.text(1))};
    }
    ends_.reset();
    return found;
}

/// Goes from day to day, past all further reports of each.
std::optional<Bearing> AddressStates::exhaustion(std::int64_t id) {
    std::optional<Bearing> found = bearing(id, "retry");
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
        history.decision = decision_.text(0);
        history.decided = decision_.number(1);
    }
    decision_.reset();
    if (isDecided || !history.isMailbox) return history;
    if (read_.number(11) != 0) {
        history.unsubscribed = bearing(id, "unsubscribe");
    } else if (read_.number(12) != 0) {
        history.suppressed = bearing(id, "suppress");
    } else {
        history.exhausted = exhaustion(id);
    }
    return history;
}

void AddressStates::update(std::int64_t id, const Counted& more) {
    read_.with(id).step();
    const std::string_view pattern = protection_.patternFor(read_.text(0));
    const AddressState state = stateOf(historyOf(id, !pattern.empty()));
    if (state.cause == "protected") {
        spared_.push_back({std::string(read_.text(9)), std::string(pattern), state.reason});
    }
    const bool wasSuppressed = read_.text(2) == "suppressed";
    const bool isOther = wasSuppressed != state.isSuppressed || read_.text(3) != state.cause;
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
        .with(id, state.isSuppressed ? "suppressed" : "active", orNull(state.cause),
              orNull(state.reason), state.since, all.count, all.first, all.last,
              isOther ? std::optional(now_) : std::nullopt)
        .run();
}

void Counted::add(Time seen) noexcept {
    ++count;
    first = std::min(seen, first.value_or(seen));
    last = std::max(seen, last.value_or(seen));
}

Rules rulesOf(Ledger& ledger) {
    Rules rules;
    Statement statement(ledger.database(), "SELECT name, value FROM settings");
    while (statement.step()) {
        if (statement.text(0) == "after") rules.after = statement.number(1);
        if (statement.text(0) == "within") rules.within = statement.number(1);
    }
    return rules;
}

void changeRules(Ledger& ledger, const Rules& rules, Time now) {
    if (rulesOf(ledger) == rules) return;
    Transaction transaction(ledger.database());
    Statement set(ledger.database(), "UPDATE settings SET value = ?2 WHERE name = ?1");
    set.with("after", rules.after).run();
    set.with("within", rules.within).run();
    std::vector<std::int64_t> failing;
    Statement find(ledger.database(),
                   "SELECT DISTINCT address FROM events WHERE bearing = 'retry' "
                   "AND address IS NOT NULL");
    while (find.step()) failing.push_back(find.number(0));
    AddressStates states(ledger, now);
    for (const std::int64_t id : failing) states.update(id);
    transaction.commit();
}

}  // namespace bouncecheck::ledger
