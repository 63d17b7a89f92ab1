#include <CLI/CLI.hpp>
#include <ostream>
#include <string>

#include "ledger/Checking.h"
#include "tool/Problem.h"
#include "tool/commands/Command.h"
#include "tool/commands/LedgerOptions.h"
#include "tool/output/TerminalText.h"

namespace bouncecheck {
namespace {

class Check final : public Command {
public:
    void declare(CLI::App& app) override { declareLedger(app, file_); }

    int run(const CommandStreams& streams) override {
        ledger::Ledger file(file_, ledger::Ledger::Missing::refuse);
        int status = EXIT_ALL_CLASSIFIED;
        const ledger::Contents contents = ledger::check(file, [&](std::string_view fault) {
            reportProblem(streams.err, file_, fault);
            status = EXIT_SOME_UNREADABLE;
        });
        streams.out << printable(file_) << ": " << contents.messages << " messages with "
                    << contents.events << " reports about " << contents.addresses << " addresses, "
                    << contents.suppressed << " of them suppressed: "
                    << (status == EXIT_ALL_CLASSIFIED ? "in order" : "not in order") << '\n'
                    << std::flush;
        return status;
    }

private:
    std::string file_;
};

}  // namespace

std::unique_ptr<Command> makeCheckCommand() { return std::make_unique<Check>(); }

}  // namespace bouncecheck
