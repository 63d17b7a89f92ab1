#include "tool/commands/LedgerOptions.h"

#include <chrono>

#include "ledger/RuleSettings.h"
#include "tool/Arguments.h"
#include "tool/Problem.h"
#include "tool/commands/Times.h"

namespace bouncecheck {

void declareLedger(CLI::App& app, std::string& file) {
    app.add_option("--ledger", file, "The file of the ledger")
        ->check(fileName())
        ->type_name("FILE")
        ->required()
        ->group("Ledger");
}

void declareRules(CLI::App& app, RuleOptions& rules) {
    constexpr const char* group = "Ledger";
    app.add_option("--after", rules.after,
                   "Suppress an address once mail to it failed on N days; the ledger remembers "
                   "it\n[5]")
        ->type_name("N")
        ->check(CLI::Range(std::int64_t{1}, ledger::mostAfter).description(""))
        ->group(group);
    app.add_option_function<std::string>(
           "--within", checkedBy([&](std::string_view v) {
               constexpr ledger::Time most = ledger::mostWithin * ledger::secondsPerDay;
               const ledger::Time seconds = parseDuration(v);
               if (seconds % ledger::secondsPerDay != 0 || seconds > most) {
                   throw std::invalid_argument("--within takes whole days, at most 10000d");
               }
               rules.within = seconds / ledger::secondsPerDay;
           }),
           "Count only days of --after that lie within this time, such as 30d or 4w;\nthe ledger "
           "remembers it [30d]")
        ->type_name("TIME")
        ->group(group);
}

void applyRules(ledger::Ledger& file, const RuleOptions& options) {
    if (!options.after && !options.within) return;
    ledger::Rules rules = ledger::rulesOf(file);
    rules.after = options.after.value_or(rules.after);
    rules.within = options.within.value_or(rules.within);
    ledger::changeRules(file, rules, timeNow());
}

ledger::Time timeNow() noexcept {
    using std::chrono::system_clock;
    return system_clock::to_time_t(system_clock::now());
}

void warnOfSpared(std::ostream& err, std::span<const ledger::SparedAddress> spared) {
    for (const ledger::SparedAddress& one : spared) {
        reportProblem(err, one.address,
                      "is not suppressed" + (one.reason.empty() ? "" : " for " + one.reason) +
                          ", since " + one.pattern + " protects it");
    }
}

}  // namespace bouncecheck
