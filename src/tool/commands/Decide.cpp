#include <CLI/CLI.hpp>
#include <stdexcept>
#include <string>
#include <vector>

#include "ledger/Decisions.h"
#include "tool/commands/Command.h"
#include "tool/commands/LedgerOptions.h"
#include "tool/output/Address.h"

namespace bouncecheck {
namespace {

/// `allow` and `deny`.
class Decide final : public Command {
public:
    explicit Decide(ledger::Decision decision) : decision_(decision) {}

    void declare(CLI::App& app) override {
        declareLedger(app, file_);
        app.add_option("ADDRESS", addresses_, "The addresses; letter case does not matter")
            ->type_name("")
            ->required();
        app.add_option("--reason", text_, "Why, for those who ask later")
            ->type_name("TEXT")
            ->group("Ledger");
    }

    void complete() override {
        for (const std::string& address : addresses_) {
            if (!isAddress(address)) {
                throw std::invalid_argument("\"" + address + "\" is no address");
            }
            // It may be part of one (RFC 5322, section 3.2.3), but is nearly always meant to stand
            // for others.
            if (address.find('*') != std::string::npos) {
                throw std::invalid_argument("\"" + address +
                                            "\" is a pattern, which only protect takes");
            }
        }
    }

    int run(const CommandStreams& streams) override {
        ledger::Ledger file(file_, ledger::Ledger::Missing::create);
        warnOfSpared(streams.err, ledger::decide(file, decision_, addresses_, text_, timeNow()));
        return EXIT_ALL_CLASSIFIED;
    }

private:
    ledger::Decision decision_;
    std::string file_;
    std::vector<std::string> addresses_;
    std::string text_;
};

}  // namespace

std::unique_ptr<Command> makeAllowCommand() {
    return std::make_unique<Decide>(ledger::Decision::allow);
}

std::unique_ptr<Command> makeDenyCommand() {
    return std::make_unique<Decide>(ledger::Decision::deny);
}

}  // namespace bouncecheck
