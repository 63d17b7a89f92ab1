#include "ledger/AddressRows.h"

namespace bouncecheck::ledger {

AddressRows::AddressRows(Ledger& ledger, const std::string& condition)
    : sql_(
          "SELECT id, key, coalesce(written, key), is_mailbox, state, cause, reason, since, "
          "count, first_seen, last_seen FROM addresses " +
          condition),
      statement_(ledger.database(), sql_.c_str()) {}

std::optional<AddressRow> AddressRows::next() {
    if (!statement_.step()) return std::nullopt;
    return AddressRow{.id = statement_.number(0),
                      .key = std::string(statement_.text(1)),
                      .written = std::string(statement_.text(2)),
                      .isMailbox = statement_.number(3) != 0,
                      .state = {.isSuppressed = statement_.text(4) == "suppressed",
                                .cause = causeNamed(statement_.text(5)),
                                .reason = std::string(statement_.text(6)),
                                .since = statement_.optionalNumber(7)},
                      .counted = {.count = statement_.number(8),
                                  .first = statement_.optionalNumber(9),
                                  .last = statement_.optionalNumber(10)}};
}

}  // namespace bouncecheck::ledger
