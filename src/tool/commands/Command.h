#pragma once

#include <iosfwd>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "tool/ExitStatus.h"
#include "tool/Terminal.h"

namespace CLI {
class App;
}

namespace bouncecheck {

/// Where a command writes.
struct CommandStreams {
    std::ostream& out;
    std::ostream& err;
    const Terminal& terminal;
};

/// A command such as `bouncecheck scan`: what it was told, and what it does.
class Command {
public:
    Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    virtual ~Command() = default;

    /// Declares its options and arguments, which fill the command.
    virtual void declare(CLI::App& app) = 0;
    /// Called once they are filled; throws std::invalid_argument for those that do not go
    /// together.
    virtual void complete() {}
    /// Returns the exit status. A failure may be thrown.
    virtual int run(const CommandStreams& streams) = 0;
};

struct CommandRow {
    std::string_view name;
    /// What stands behind it in a usage line.
    std::string_view arguments;
    /// One sentence.
    std::string_view purpose;
    /// What --help says below the options.
    std::string_view closing;
    std::unique_ptr<Command> (*make)();
    int wrongUsage = EXIT_WRONG_USAGE;
    /// The exit status of a failure.
    int failure = EXIT_SOME_UNREADABLE;
};

std::span<const CommandRow> allCommands() noexcept;
/// Null for any other word.
const CommandRow* commandNamed(std::string_view name) noexcept;

/// Declares what a command takes, with its --help.
void declareCommand(Command& command, CLI::App& app);

/// Runs a command with the arguments of `main` from its name on. Returns the exit status; nothing
/// is thrown.
int runCommand(const CommandRow& row, int argc, const char* const* argv,
               const CommandStreams& streams) noexcept;

// One file each.
std::unique_ptr<Command> makeRecordCommand();
std::unique_ptr<Command> makeScanCommand();
std::unique_ptr<Command> makeWatchCommand();
std::unique_ptr<Command> makeListCommand();
std::unique_ptr<Command> makeWhyCommand();
std::unique_ptr<Command> makeAllowCommand();
std::unique_ptr<Command> makeDenyCommand();
std::unique_ptr<Command> makeProtectCommand();
std::unique_ptr<Command> makeCheckCommand();

}  // namespace bouncecheck
