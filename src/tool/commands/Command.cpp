#include "tool/commands/Command.h"

#include <sysexits.h>

#include <algorithm>
#include <csignal>
#include <exception>
#include <iterator>
#include <new>
#include <ostream>

#include "tool/Arguments.h"
#include "tool/Help.h"
#include "tool/Problem.h"
#include "tool/sources/Sources.h"

namespace bouncecheck {
namespace {

constexpr std::string_view usualStatus =
    "Exit status: 0 when all was done, 1 when something could not be read or written, 2 for wrong "
    "usage.";

constexpr CommandRow rows[] = {
    {"record", "--ledger FILE [OPTION]... < MESSAGE",
     "Records the message on standard input in a ledger, as a mail server wants it.",
     "Exit status: 0 when the message is recorded, for good; 75 when it could not be, so that the "
     "mail server keeps it and tries again; 64 for wrong usage. Nothing is printed on standard "
     "output.",
     makeRecordCommand, EX_USAGE, EX_TEMPFAIL},
    {"scan", "--ledger FILE [OPTION]... [PATH]...",
     "Records the messages of mailboxes in a ledger.",
     "Exit status: 0 when all messages were recorded, 1 when something could not be read or "
     "written (the rest is still done), 2 for wrong usage. A message that the ledger has is not "
     "recorded "
     "again, so a scan that was interrupted can be started again.",
     makeScanCommand},
    {"watch", "--ledger FILE [OPTION]... MAILDIR...",
     "Records what is in Maildirs in a ledger, then each message as it comes.",
     "SIGTERM and SIGINT end it. Exit status: 0 when one of these ended it, 1 when the ledger "
     "cannot be used, 2 for wrong usage.",
     makeWatchCommand},
    {"list", "--ledger FILE [OPTION]...", "Lists the addresses to stop mailing.", usualStatus,
     makeListCommand},
    {"why", "--ledger FILE ADDRESS", "Explains in words what a ledger knows of an address.",
     "Exit status: 0 when something is known, 1 when not or when the ledger could not be read, 2 "
     "for wrong usage.",
     makeWhyCommand},
    {"allow", "--ledger FILE [OPTION]... ADDRESS...",
     "Lets addresses be mailed, whatever is reported of them.", usualStatus, makeAllowCommand},
    {"deny", "--ledger FILE [OPTION]... ADDRESS...",
     "Stops mailing addresses, whatever is reported of them.", usualStatus, makeDenyCommand},
    {"protect", "--ledger FILE [OPTION]... [PATTERN]...",
     "Keeps addresses from ever being suppressed; lists the patterns when none is given.",
     usualStatus, makeProtectCommand},
    {"check", "--ledger FILE", "Checks a ledger, and that every state follows from the reports.",
     "Exit status: 0 when all is in order, 1 when not, 2 for wrong usage.", makeCheckCommand},
};

int runParsed(const CommandRow& row, int argc, const char* const* argv,
              const CommandStreams& streams) {
    CLI::App app(std::string(row.purpose), "bouncecheck " + std::string(row.name));
    const std::unique_ptr<Command> command = row.make();
    declareCommand(*command, app);
    bool isComplete = false;
    const Arguments arguments = {
        .argc = argc,
        .argv = argv,
        .help = [&] { return commandHelpText(app, row.arguments, row.closing); },
        .hint = "see bouncecheck " + std::string(row.name) + " --help",
        .wrongUsage = row.wrongUsage};
    const int status = readArguments(app, arguments, streams.out, streams.err, [&] {
        command->complete();
        isComplete = true;
    });
    return isComplete ? command->run(streams) : status;
}

}  // namespace

std::span<const CommandRow> allCommands() noexcept { return rows; }

const CommandRow* commandNamed(std::string_view name) noexcept {
    const auto* row = std::ranges::find(rows, name, &CommandRow::name);
    return row == std::end(rows) ? nullptr : row;
}

void declareCommand(Command& command, CLI::App& app) {
    command.declare(app);
    app.set_help_flag("-h,--help", "Print this help")->group("Other options");
}

int runCommand(const CommandRow& row, int argc, const char* const* argv,
               const CommandStreams& streams) noexcept {
    // A file that must not grow further is an error of that write.
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        return runParsed(row, argc, argv, streams);
    } catch (const std::bad_alloc&) {
        reportProblem(streams.err, outOfMemory);
    } catch (const std::exception& error) {
        reportProblem(streams.err, error.what());
    }
    return row.failure;
}

}  // namespace bouncecheck
