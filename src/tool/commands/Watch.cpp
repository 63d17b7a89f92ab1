#include <poll.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <array>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "ledger/LedgerError.h"
#include "ledger/Recorder.h"
#include "tool/InputOptions.h"
#include "tool/Problem.h"
#include "tool/commands/Command.h"
#include "tool/commands/EndSignals.h"
#include "tool/commands/Intake.h"
#include "tool/commands/LedgerOptions.h"
#include "tool/commands/MaildirWatch.h"

namespace bouncecheck {
namespace {

using namespace std::chrono_literals;

/// A ledger that is opened again when it cannot be used, or another file has taken its place.
class SteadyLedger {
public:
    SteadyLedger(std::string path, const RuleOptions& rules)
        : path_(std::move(path)), rules_(rules) {}

    /// Throws LedgerError, as all below.
    ledger::Recorded record(const std::vector<ledger::MessageEntry>& entries) {
        open();
        return opened_->recorder.record(entries, timeNow());
    }
    void open() {
        if (opened_) return;
        opened_.emplace(path_, rules_);
        identity_ = identityOf(path_);
    }
    /// Whether another file is there now, or none, which is seen to by opening again.
    bool wasReplaced() {
        if (!opened_ || identityOf(path_) == identity_) return false;
        opened_.reset();
        return true;
    }

private:
    struct Opened {
        Opened(const std::string& path, const RuleOptions& rules)
            : file(path, ledger::Ledger::Missing::create), recorder(file) {
            // Signals are heard between two tries; a large scan may take several.
            file.database().waitForLocks(2s);
            applyRules(file, rules);
        }
        ledger::Ledger file;
        ledger::Recorder recorder;
    };

    std::string path_;
    const RuleOptions& rules_;
    std::optional<Opened> opened_;
    std::optional<FileIdentity> identity_;
};

class Watch final : public Command {
public:
    void declare(CLI::App& app) override {
        declareLedger(app, file_);
        declareRules(app, rules_);
        app.add_option("MAILDIR", maildirs_, "The folders that hold 'new' and 'cur'")
            ->type_name("")
            ->required();
        declareMaxMessageSize(app, maxMessageSize_, "Record larger messages as unread");
        declareVerp(app, verp_);
    }

    int run(const CommandStreams& streams) override {
        const EndSignals signals;
        MaildirWatch watch(maildirs_);
        Intake intake(maxMessageSize_, verp_);
        SteadyLedger ledger(file_, rules_);
        const Run run = {streams, signals, watch, intake, ledger};
        openAtStart(run);
        do {
            if (ledger.wasReplaced()) watch.forget();
            watch.takeNew([&](const std::string& path) { take(run, path); });
            write(run);
            watch.reportLost([&](const std::string& folder, const std::string& why) {
                reportProblem(streams.err, folder, why + "; waiting for it");
            });
        } while (!waits(run, 400ms));
        return EXIT_ALL_CLASSIFIED;
    }

private:
    struct Run {
        const CommandStreams& streams;
        const EndSignals& signals;
        MaildirWatch& watch;
        Intake& intake;
        SteadyLedger& ledger;
    };

    /// Fails where waiting would not help.
    void openAtStart(const Run& run) {
        try {
            run.ledger.open();
        } catch (const ledger::LedgerError& error) {
            if (error.kind() != ledger::LedgerError::Kind::unavailable) throw;
            reportProblem(run.streams.err, std::string(error.what()) + "; trying again");
        }
    }

    void take(const Run& run, const std::string& path) {
        constexpr std::size_t mostInMemory = 500;
        if (isEnding_) return;
        try {
            entries_.push_back(run.intake.read(*openFile(path), path, timeNow()));
        } catch (const ReadError& error) {
            // Whoever reads mail moves it.
            if (::access(path.c_str(), F_OK) == 0) {
                reportProblem(run.streams.err, path, error.what());
            }
        }
        if (entries_.size() >= mostInMemory) write(run);
    }

    /// Goes on trying until the entries are in the ledger, or the program has to end: then they
    /// are found again when it is started again.
    void write(const Run& run) {
        bool isReported = false;
        while (!entries_.empty() && !isEnding_) {
            try {
                const ledger::Recorded recorded = run.ledger.record(entries_);
                warnOfSpared(run.streams.err, recorded.spared);
                entries_.clear();
            } catch (const ledger::LedgerError& error) {
                if (error.kind() != ledger::LedgerError::Kind::unavailable) throw;
                if (!isReported) {
                    reportProblem(run.streams.err, std::string(error.what()) + "; trying again");
                }
                isReported = true;
                isEnding_ = waitsFor(run.signals.fd(), -1, 1s);
            }
        }
    }

    /// Whether the program has to end. Returns as soon as something may be new, too.
    bool waits(const Run& run, std::chrono::milliseconds most) {
        isEnding_ = isEnding_ || waitsFor(run.signals.fd(), run.watch.fd(), most);
        return isEnding_;
    }

    static bool waitsFor(int end, int other, std::chrono::milliseconds most) {
        std::array<pollfd, 2> waited = {pollfd{end, POLLIN, 0}, pollfd{other, POLLIN, 0}};
        ::poll(waited.data(), waited.size(), static_cast<int>(most.count()));
        return waited[0].revents != 0;
    }

    std::string file_;
    RuleOptions rules_;
    std::vector<std::string> maildirs_;
    std::size_t maxMessageSize_ = SourceOptions().maxMessageSize;
    std::vector<VerpPattern> verp_;
    std::vector<ledger::MessageEntry> entries_;
    bool isEnding_ = false;
};

}  // namespace

std::unique_ptr<Command> makeWatchCommand() { return std::make_unique<Watch>(); }

}  // namespace bouncecheck
