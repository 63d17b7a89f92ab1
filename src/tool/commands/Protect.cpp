#include <CLI/CLI.hpp>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "ledger/Protection.h"
#include "tool/Problem.h"
#include "tool/commands/Command.h"
#include "tool/commands/LedgerOptions.h"
#include "tool/output/TerminalText.h"

namespace bouncecheck {
namespace {

class Protect final : public Command {
public:
    void declare(CLI::App& app) override {
        declareLedger(app, file_);
        app.add_option("PATTERN", patterns_,
                       "Addresses, with '*' for any characters (postmaster@*), or a domain\n"
                       "for all of its addresses (example.org)")
            ->type_name("");
        app.add_flag("--remove", isRemoval_, "Protect these no longer")->group("Ledger");
    }

    void complete() override {
        if (isRemoval_ && patterns_.empty())
            throw std::invalid_argument("--remove requires a PATTERN");
        for (std::string& pattern : patterns_) {
            const std::string meant = ledger::patternOf(pattern);
            if (meant.empty()) {
                throw std::invalid_argument("\"" + pattern + "\" is no pattern of addresses");
            }
            pattern = meant;
        }
    }

    int run(const CommandStreams& streams) override {
        using ledger::Ledger;
        const bool isChange = !patterns_.empty() && !isRemoval_;
        Ledger file(file_, isChange ? Ledger::Missing::create : Ledger::Missing::refuse);
        if (isChange) ledger::protect(file, patterns_, timeNow());
        if (isRemoval_) return remove(file, streams);
        if (patterns_.empty()) print(ledger::Protection(file), streams.out);
        return EXIT_ALL_CLASSIFIED;
    }

private:
    int remove(ledger::Ledger& file, const CommandStreams& streams) {
        const auto unknown = ledger::unprotect(file, patterns_, timeNow());
        for (const std::string& pattern : unknown) {
            reportProblem(streams.err, pattern, "is not among the protected");
        }
        return unknown.empty() ? EXIT_ALL_CLASSIFIED : EXIT_SOME_UNREADABLE;
    }

    static void print(const ledger::Protection& protection, std::ostream& out) {
        for (const std::string& pattern : protection.patterns()) out << printable(pattern) << '\n';
        out.flush();
    }

    std::string file_;
    std::vector<std::string> patterns_;
    bool isRemoval_ = false;
};

}  // namespace

std::unique_ptr<Command> makeProtectCommand() { return std::make_unique<Protect>(); }

}  // namespace bouncecheck
