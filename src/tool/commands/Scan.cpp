#include <CLI/CLI.hpp>
#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "tool/Arguments.h"
#include "tool/ClassifyAll.h"
#include "tool/InputOptions.h"
#include "tool/Problem.h"
#include "tool/Progress.h"
#include "tool/commands/BatchRecorder.h"
#include "tool/commands/Command.h"
#include "tool/commands/LedgerEntry.h"
#include "tool/commands/LedgerOptions.h"

namespace bouncecheck {
namespace {

/// A message on its way into the ledger.
struct ScannedMessage {
    explicit ScannedMessage(Classified read) noexcept : message(std::move(read)) {}

    Classified message;
    ledger::MessageEntry entry;
};

class Scan final : public Command {
public:
    void declare(CLI::App& app) override {
        declareLedger(app, file_);
        declareRules(app, rules_);
        declareSources(app, sources_);
        declareMaxMessageSize(app, sources_.maxMessageSize);
        declareVerp(app, verp_);
        declareJobs(app, jobs_);
    }

    void complete() override { checkSources(sources_); }

    int run(const CommandStreams& streams) override {
        readStandardInputElse(sources_, streams.err);
        ledger::Ledger file(file_, ledger::Ledger::Missing::create,
                            ledger::Ledger::Durability::last);
        applyRules(file, rules_);
        for (std::string& part : ledger::filesOf(file_))
            sources_.excluded.push_back(std::move(part));
        BatchRecorder recorder(file, streams.err);
        Progress progress(streams.err, streams.terminal.isErr);
        int status = EXIT_ALL_CLASSIFIED;
        const auto noteProblem = [&](const auto& where, std::string_view reason) {
            progress.clear();
            reportProblem(streams.err, where, reason);
            status = EXIT_SOME_UNREADABLE;
        };
        classifyAll<ScannedMessage>(
            sources_, jobs_, [this] { return work(); },
            [&](ScannedMessage& scanned) {
                const Classified& message = scanned.message;
                progress.update(message.size, message.progress);
                if (message.problem.empty()) {
                    recorder.add(std::move(scanned.entry));
                } else {
                    noteProblem(message.place, message.problem);
                }
            },
            noteProblem);
        recorder.finish();
        return status;
    }

private:
    OrderedPipeline<ScannedMessage>::Work work() {
        return [classifier = std::make_shared<ToolClassifier>(wantedByLedger, verp_),
                now = timeNow()](ScannedMessage& scanned) {
            Classified& message = scanned.message;
            const ledger::Digest digest = ledger::digestOf(message.bytes);
            classifier->classify(message);
            try {
                scanned.entry = entryOf(message, digest, message.place.text(), now);
            } catch (const std::bad_alloc&) {
                message.problem = outOfMemory;
            }
        };
    }

    std::string file_;
    RuleOptions rules_;
    SourceOptions sources_;
    std::vector<VerpPattern> verp_;
    std::size_t jobs_ = 0;
};

}  // namespace

std::unique_ptr<Command> makeScanCommand() { return std::make_unique<Scan>(); }

}  // namespace bouncecheck
