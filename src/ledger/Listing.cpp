#include "ledger/Listing.h"

#include <string>

namespace bouncecheck::ledger {
namespace {

constexpr const char* columns =
    "SELECT coalesce(written, key), state = 'suppressed', cause, reason, since, first_seen, "
    "last_seen, count, CASE WHEN cause IN ('deny', 'allow') "
    "THEN (SELECT text FROM decisions d WHERE d.address = a.id ORDER BY d.id DESC LIMIT 1) "
    "ELSE (SELECT coalesce(evidence, diagnostic) FROM events e "
    "WHERE e.address = a.id AND e.bearing = a.cause ORDER BY e.seen DESC, e.reason DESC LIMIT 1) "
    "END, changed, id FROM addresses a ";

void handOut(Statement& statement, const OnAddress& onAddress) {
    while (statement.step()) {
        onAddress({.address = statement.text(0),
                   .isSuppressed = statement.number(1) != 0,
                   .cause = causeNamed(statement.text(2)),
                   .reason = statement.text(3),
                   .since = statement.optionalNumber(4),
                   .firstSeen = statement.optionalNumber(5),
                   .lastSeen = statement.optionalNumber(6),
                   .count = statement.number(7),
                   .evidence = statement.text(8),
                   .changed = statement.optionalNumber(9),
                   .id = statement.number(10)});
    }
}

void handOutWhere(Ledger& ledger, const char* condition, const OnAddress& onAddress) {
    const std::string sql = std::string(columns) + condition;
    Statement statement(ledger.database(), sql.c_str());
    handOut(statement, onAddress);
}

}  // namespace

void forEachSuppressed(Ledger& ledger, const OnAddress& onAddress) {
    handOutWhere(ledger, "WHERE state = 'suppressed' ORDER BY key", onAddress);
}

void forEachProtected(Ledger& ledger, const OnAddress& onAddress) {
    handOutWhere(ledger, "WHERE cause = 'protected' ORDER BY key", onAddress);
}

void forEachChanged(Ledger& ledger, Time time, const OnAddress& onAddress) {
    const std::string sql = std::string(columns) + "WHERE changed >= ?1 ORDER BY changed, id";
    Statement statement(ledger.database(), sql.c_str());
    handOut(statement.with(time), onAddress);
}

DecidingReports::DecidingReports(Ledger& ledger)
    : find_(ledger.database(),
            "SELECT outcome, status, reply_code, diagnostic, message_id, place FROM events e "
            "JOIN messages m ON m.id = e.message WHERE e.address = ?1 AND e.bearing = ?2 "
            "ORDER BY e.seen DESC, e.reason DESC LIMIT 1") {}

DecidingReport DecidingReports::of(const ListedAddress& address) {
    if (!find_.with(address.id, nameOf(address.cause)).step()) return {};
    return {find_.text(0), find_.text(1), find_.text(2),
            find_.text(3), find_.text(4), find_.text(5)};
}

}  // namespace bouncecheck::ledger
