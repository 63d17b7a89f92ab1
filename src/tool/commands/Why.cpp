#include <CLI/CLI.hpp>
#include <ostream>
#include <string>

#include "ledger/History.h"
#include "tool/Problem.h"
#include "tool/commands/Command.h"
#include "tool/commands/LedgerOptions.h"
#include "tool/commands/Times.h"
#include "tool/output/TerminalText.h"

namespace bouncecheck {
namespace {

using ledger::Bearing;
using ledger::Cause;
using ledger::Decision;
using ledger::FullHistory;
using ledger::HistoryLine;

std::string rulesText(const ledger::Rules& rules) {
    return std::to_string(rules.after) + " days of " + std::to_string(rules.within);
}

/// What the cause of a state means.
std::string causeText(const FullHistory& history) {
    switch (history.state.cause) {
        case Cause::none: break;
        case Cause::suppress:
            return "a reply says that its mailbox or domain does not exist, or the mailbox was "
                   "closed";
        case Cause::unsubscribe: return "its owner complained, or asked for no more mail";
        case Cause::retry: return "mail to it failed on " + rulesText(history.rules);
        case Cause::deny:
        case Cause::allow: return "this was decided by hand";
        case Cause::protection:
            return history.protectedBy + " protects it; otherwise it would be suppressed";
    }
    return "";
}

std::string stateText(const FullHistory& history) {
    const ledger::AddressState& state = history.state;
    std::string text = state.isSuppressed ? "Suppressed" : "Not suppressed";
    if (state.since) text += " since " + dayText(*state.since);
    const std::string cause = causeText(history);
    if (!cause.empty()) text += ": " + cause;
    if (!state.reason.empty()) text += " (" + state.reason + ")";
    return text + ".";
}

/// What a line of the history does to the state.
std::string_view effectText(const FullHistory& history, const HistoryLine& line) {
    if (line.decision) {
        return line.decision == Decision::allow ? "may be mailed" : "is suppressed";
    }
    if (line.bearing == Bearing::none) return "changes nothing";
    if (!history.isMailbox) return "changes nothing, since nobody can mail this address";
    if (line.bearing == Bearing::success) return "clears the failures before it";
    return line.bearing == Bearing::retry ? "counts as a day of failure" : "suppresses at once";
}

void appendPart(std::string& text, std::string_view between, std::string_view part) {
    if (!part.empty()) text.append(text.empty() ? "" : between).append(part);
}

/// What the message said.
std::string wordsOf(const HistoryLine& line) {
    // The reply holds the evidence, unless that is what an own table says.
    const std::string_view reply = line.diagnostic.empty() ? line.evidence : line.diagnostic;
    std::string words;
    for (const std::string_view code :
         {std::string_view(line.replyCode), std::string_view(line.status)}) {
        if (reply.find(code) == reply.npos) appendPart(words, " ", code);
    }
    appendPart(words, ": ", reply);
    return words;
}

/// Where the message is.
std::string placeText(const HistoryLine& line) {
    std::string text;
    appendPart(text, ", ", line.place);
    appendPart(text, ", ", line.messageId);
    return text;
}

void printIndented(std::ostream& out, const std::string& text) {
    if (text.empty()) return;
    out << "    ";
    writePrintable(out, text);
    out << '\n';
}

void print(std::ostream& out, const FullHistory& history) {
    writePrintable(out, history.address);
    out << '\n' << printable(stateText(history)) << '\n';
    for (const HistoryLine& line : history.lines) {
        out << '\n' << minuteText(line.time) << " UTC  " << printable(line.what);
        if (!line.reason.empty()) out << ", " << printable(line.reason);
        out << ": " << effectText(history, line) << '\n';
        printIndented(out, wordsOf(line));
        printIndented(out, placeText(line));
    }
}

class Why final : public Command {
public:
    void declare(CLI::App& app) override {
        declareLedger(app, file_);
        app.add_option("ADDRESS", address_, "The address; letter case does not matter")
            ->type_name("")
            ->required();
    }

    int run(const CommandStreams& streams) override {
        ledger::Ledger file(file_, ledger::Ledger::Missing::refuse);
        const auto history = ledger::historyOf(file, address_);
        if (!history) {
            reportProblem(streams.err, address_, "the ledger has nothing about it");
            return EXIT_SOME_UNREADABLE;
        }
        print(streams.out, *history);
        if (!streams.out.flush()) throw std::runtime_error("the output could not be written");
        return EXIT_ALL_CLASSIFIED;
    }

private:
    std::string file_;
    std::string address_;
};

}  // namespace

std::unique_ptr<Command> makeWhyCommand() { return std::make_unique<Why>(); }

}  // namespace bouncecheck
