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
      rows_(ledger, "WHERE id = ?1"),
      histories_(ledger, rules_),
      find_(ledger.database(), "SELECT id FROM addresses WHERE key = ?1"),
      last_(ledger.database(), "SELECT max(id) FROM addresses"),
      add_(ledger.database(),
           "INSERT INTO addresses (id, key, written, is_mailbox, state, cause, reason, since, "
           "count, first_seen, last_seen, changed) "
           "VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12)"),
      write_(ledger.database(),
             "UPDATE addresses SET state = ?2, cause = ?3, reason = ?4, since = ?5, count = ?6, "
             "first_seen = ?7, last_seen = ?8, changed = coalesce(?9, changed) WHERE id = ?1") {}

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

void AddressStates::update(std::int64_t id, const Counted& more) {
    const std::optional<AddressRow> row = rows_.only(id);
    if (!row) return;
    const std::string_view pattern = protection_.patternFor(row->key);
    AddressHistory history = histories_.of(id, row->isMailbox);
    history.isProtected = !pattern.empty();
    const AddressState state = spare(stateOf(history), row->written, pattern);
    if (more.count == 0 && state == row->state) return;
    const bool isOther =
        state.isSuppressed != row->state.isSuppressed || state.cause != row->state.cause;
    Counted all = row->counted;
    all.add(more);
    write_
        .with(id, state.isSuppressed ? "suppressed" : "active", orNull(nameOf(state.cause)),
              orNull(state.reason), state.since, all.count, all.first, all.last,
              isOther ? std::optional(now_) : std::nullopt)
        .run();
}

}  // namespace bouncecheck::ledger
