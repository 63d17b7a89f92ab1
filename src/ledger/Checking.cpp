#include "ledger/Checking.h"

#include <algorithm>
#include <optional>
#include <string>

#include "ledger/AddressRows.h"
#include "ledger/Protection.h"
#include "ledger/ReportedHistory.h"
#include "ledger/RuleSettings.h"

namespace bouncecheck::ledger {
namespace {

/// What an address should have.
struct Expected {
    AddressState state;
    Counted counted;

    bool operator==(const Expected&) const = default;
};

/// Computes all from all reports, one after the other. The states themselves are kept another
/// way (StoredHistories), which does not read everything again for each report.
class PlainStates {
public:
    explicit PlainStates(Ledger& ledger)
        : protection_(ledger),
          rules_(rulesOf(ledger)),
          reports_(ledger.database(),
                   "SELECT seen, bearing, reason FROM events WHERE address = ?1 "
                   "ORDER BY seen, bearing = 'success', reason"),
          decisions_(ledger.database(),
                     "SELECT decision, made FROM decisions WHERE address = ?1 ORDER BY id") {}

    Expected of(std::int64_t id, std::string_view key, bool isMailbox) {
        ReportedHistory reported(rules_);
        reports_.with(id);
        while (reports_.step()) {
            reported.add({reports_.number(0), bearingNamed(reports_.text(1)), reports_.text(2)});
        }
        AddressHistory history = reported.history(isMailbox);
        history.isProtected = !protection_.patternFor(key).empty();
        decisions_.with(id);
        while (decisions_.step()) {
            history.decision = decisionNamed(decisions_.text(0));
            history.decided = decisions_.number(1);
        }
        return {stateOf(history), reported.counted()};
    }

private:
    Protection protection_;
    Rules rules_;
    Statement reports_, decisions_;
};

std::int64_t numberOf(Ledger& ledger, const char* sql) {
    Statement statement(ledger.database(), sql);
    return statement.step() ? statement.number(0) : 0;
}

void checkFile(Ledger& ledger, const OnFault& onFault) {
    ledger.database().run("PRAGMA ignore_check_constraints = OFF");
    Statement integrity(ledger.database(), "PRAGMA integrity_check");
    while (integrity.step()) {
        if (integrity.text(0) != "ok") onFault(integrity.text(0));
    }
    Statement keys(ledger.database(), "PRAGMA foreign_key_check");
    while (keys.step()) {
        onFault("a row of " + std::string(keys.text(0)) + " refers to none of " +
                std::string(keys.text(2)));
    }
}

void checkStates(Ledger& ledger, const OnFault& onFault) {
    PlainStates states(ledger);
    AddressRows addresses(ledger);
    while (const auto row = addresses.next()) {
        const Expected found = {row->state, row->counted};
        if (found != states.of(row->id, row->key, row->isMailbox)) {
            onFault("the state of " + row->key + " does not follow from its reports");
        }
    }
}

}  // namespace

Contents check(Ledger& ledger, const OnFault& onFault) {
    checkFile(ledger, onFault);
    const Snapshot snapshot(ledger.database());
    checkStates(ledger, onFault);
    return {numberOf(ledger, "SELECT count(*) FROM messages"),
            numberOf(ledger, "SELECT count(*) FROM events"),
            numberOf(ledger, "SELECT count(*) FROM addresses"),
            numberOf(ledger, "SELECT count(*) FROM addresses WHERE state = 'suppressed'")};
}

}  // namespace bouncecheck::ledger
