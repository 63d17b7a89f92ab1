#pragma once

#include <optional>
#include <ostream>
#include <span>
#include <string>

#include "ledger/AddressStates.h"
#include "ledger/Ledger.h"

namespace CLI {
class App;
}

namespace bouncecheck {

/// Declares --ledger, which every command on a ledger takes.
void declareLedger(CLI::App& app, std::string& file);

/// When failures suppress, as far as the command line says.
struct RuleOptions {
    std::optional<std::int64_t> after;
    std::optional<std::int64_t> within;
};

void declareRules(CLI::App& app, RuleOptions& rules);
/// Makes them the rules of the ledger, where any are given.
void applyRules(ledger::Ledger& ledger, const RuleOptions& rules);

/// The time, in seconds since 1970.
ledger::Time timeNow() noexcept;

/// Warns of protected addresses, one line each.
void warnOfSpared(std::ostream& err, std::span<const ledger::SparedAddress> spared);

}  // namespace bouncecheck
