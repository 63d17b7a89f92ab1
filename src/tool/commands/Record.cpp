#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "ledger/Recorder.h"
#include "tool/InputOptions.h"
#include "tool/commands/Command.h"
#include "tool/commands/Intake.h"
#include "tool/commands/LedgerOptions.h"
#include "tool/sources/InputStream.h"

namespace bouncecheck {
namespace {

class Record final : public Command {
public:
    void declare(CLI::App& app) override {
        declareLedger(app, file_);
        declareRules(app, rules_);
        declareMaxMessageSize(app, maxMessageSize_, "Record larger messages as unread");
        declareVerp(app, verp_);
    }

    int run(const CommandStreams& streams) override {
        // The message first: no other process has to wait while it comes.
        const ledger::Time now = timeNow();
        const ledger::MessageEntry entry = readStandardInput(now);
        ledger::Ledger file(file_, ledger::Ledger::Missing::create);
        file.database().leaveLog();
        applyRules(file, rules_);
        const ledger::Recorded recorded = ledger::Recorder(file).record({&entry, 1}, now);
        warnOfSpared(streams.err, recorded.spared);
        return EXIT_ALL_CLASSIFIED;
    }

private:
    ledger::MessageEntry readStandardInput(ledger::Time now) const {
        try {
            return Intake(maxMessageSize_, verp_).read(*openStandardInput(), "", now);
        } catch (const ReadError& error) {
            throw ReadError("standard input: " + std::string(error.what()));
        }
    }

    std::string file_;
    RuleOptions rules_;
    std::size_t maxMessageSize_ = SourceOptions().maxMessageSize;
    std::vector<VerpPattern> verp_;
};

}  // namespace

std::unique_ptr<Command> makeRecordCommand() { return std::make_unique<Record>(); }

}  // namespace bouncecheck
