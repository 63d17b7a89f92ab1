#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "files/TemporaryFile.h"
#include "ledger/AddressKey.h"
#include "ledger/Listing.h"
#include "ledger/Protection.h"
#include "ledger/RuleSettings.h"
#include "tool/Arguments.h"
#include "tool/OutputFile.h"
#include "tool/RecipientFilter.h"
#include "tool/commands/Command.h"
#include "tool/commands/LedgerOptions.h"
#include "tool/commands/LedgerPage.h"
#include "tool/commands/ListForms.h"
#include "tool/commands/Times.h"
#include "tool/sources/FileIdentity.h"

namespace bouncecheck {
namespace {

constexpr std::pair<std::string_view, ListForm> forms[] = {{"table", ListForm::table},
                                                           {"json", ListForm::json},
                                                           {"csv", ListForm::csv},
                                                           {"tsv", ListForm::tsv}};

class List final : public Command {
public:
    void declare(CLI::App& app) override {
        constexpr const char* group = "Output";
        declareLedger(app, file_);
        app.add_option_function<std::string>(
               "--advice", checkedBy([&](std::string_view v) { keepAdvices(v); }),
               "Only what was suppressed by this advice: suppress, unsubscribe, retry, or\nnone "
               "(by hand)")
            ->type_name("LIST")
            ->group(group);
        app.add_option_function<std::string>(
               "--reason", checkedBy([&](std::string_view v) { filter_.keepReasons(v); }),
               "Only what failed for these reasons, such as unknown-mailbox,mailbox-full")
            ->type_name("LIST")
            ->group(group);
        declareTime(app, "--since", since_,
                    "Only what was suppressed at this time or later: 2026-11-22,\n"
                    "2026-11-22T10:00:00Z, or 7d for the last seven days");
        auto* changes = declareTime(app, "--changes-since", changesSince_,
                                    "Instead, all whose suppression began, ended or got another "
                                    "cause at this\ntime or later, in the order of the changes");
        auto* format = app.add_option("--format", format_,
                                      "table, json (an object a line), csv or tsv [table]")
                           ->type_name("FORMAT")
                           ->check(oneOf({"table", "json", "csv", "tsv"}))
                           ->group(group);
        app.add_option("--html", pageFile_,
                       "Instead, write a page for the browser: the development over time, and the\n"
                       "addresses to search and sort")
            ->check(fileName())
            ->type_name("FILE")
            ->group(group);
        format->excludes("--html");
        // What ended has no reason or advice any more: who follows those alone would miss it.
        for (const char* other : {"--html", "--advice", "--reason", "--since"}) {
            changes->excludes(other);
        }
    }

    void complete() override {
        if (!pageFile_) return;
        for (const std::string& part : ledger::filesOf(file_)) {
            const auto identity = identityOf(part);
            if (identity && identity == identityOf(*pageFile_)) {
                throw std::invalid_argument("output to " + *pageFile_ +
                                            " would replace the ledger");
            }
        }
    }

    int run(const CommandStreams& streams) override {
        ledger::Ledger file(file_, ledger::Ledger::Missing::refuse);
        {
            const ledger::Snapshot snapshot(file.database());
            if (pageFile_) {
                writePage(file);
            } else {
                print(file, streams);
            }
            warnOfProtected(file, streams.err);
        }
        return EXIT_ALL_CLASSIFIED;
    }

private:
    void print(ledger::Ledger& file, const CommandStreams& streams) const {
        const auto* form =
            std::ranges::find(forms, format_, [](const auto& one) { return one.first; });
        const auto show = makeList(form->second, streams.out,
                                   styleFor(ColorWhen::automatic, streams.terminal, false));
        const auto showWanted = [&](const ledger::ListedAddress& address) {
            if (isWanted(address)) show(address);
            if (!streams.out) throw std::runtime_error("the output could not be written");
        };
        if (changesSince_) {
            ledger::forEachChanged(file, *changesSince_, showWanted);
        } else {
            ledger::forEachSuppressed(file, showWanted);
        }
        if (!streams.out.flush()) throw std::runtime_error("the output could not be written");
    }

    void writePage(ledger::Ledger& file) const {
        removeTemporariesOnSignals();
        OutputFile output(*pageFile_);
        LedgerPage page(output.stream(), {.development = ledger::developmentOf(file),
                                          .rules = ledger::rulesOf(file),
                                          .now = timeNow()});
        ledger::DecidingReports reports(file);
        ledger::forEachSuppressed(file, [&](const ledger::ListedAddress& address) {
            if (isWanted(address)) page.add(address, reports.of(address));
        });
        page.finish();
        output.commit();
    }

    static CLI::Option* declareTime(CLI::App& app, const char* name,
                                    std::optional<ledger::Time>& time, const char* description) {
        return app
            .add_option_function<std::string>(
                name, checkedBy([&time](std::string_view v) { time = parseTime(v, timeNow()); }),
                description)
            ->type_name("TIME")
            ->group("Output");
    }

    void keepAdvices(std::string_view names) {
        RecipientFilter named;
        named.keepAdvices(names);
        Recipient refused;
        refused.advice = Advice::fix;
        if (named.wants(refused)) {
            throw std::invalid_argument(
                "nothing is suppressed by the advice \"fix\"; choose from: suppress, unsubscribe, "
                "retry, none");
        }
        filter_.keepAdvices(names);
    }

    bool isWanted(const ledger::ListedAddress& address) const {
        if (since_ && address.since < since_) return false;
        Recipient recipient;
        recipient.advice = adviceNamed(nameOf(address.cause)).value_or(Advice::none);
        recipient.reason = reasonNamed(address.reason).value_or(Reason::none);
        return filter_.wants(recipient);
    }

    static void warnOfProtected(ledger::Ledger& file, std::ostream& err) {
        const ledger::Protection protection(file);
        std::vector<ledger::SparedAddress> spared;
        ledger::forEachProtected(file, [&](const ledger::ListedAddress& address) {
            const std::string key = ledger::keyOf(address.address);
            spared.push_back({std::string(address.address), std::string(protection.patternFor(key)),
                              std::string(address.reason)});
        });
        warnOfSpared(err, spared);
    }

    std::string file_;
    RecipientFilter filter_;
    std::optional<ledger::Time> since_;
    std::optional<ledger::Time> changesSince_;
    std::string format_ = "table";
    std::optional<std::string> pageFile_;
};

}  // namespace

std::unique_ptr<Command> makeListCommand() { return std::make_unique<List>(); }

}  // namespace bouncecheck
