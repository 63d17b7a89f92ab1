#include "tool/Options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>
#include <ostream>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <bouncecheck/Version.h>
#include "tool/Arguments.h"
#include "tool/ExitStatus.h"
#include "tool/Help.h"
#include "tool/InputOptions.h"
#include "tool/OutputTargets.h"

namespace bouncecheck {
namespace {

constexpr const char* purpose = "Reports what returned and automatic e-mail means.";

/// What the command line says, before the view is known.
struct CommandLine {
    Options options;
    std::optional<std::string> format;
    std::string color = "auto";
    bool summary = false;
    bool suppress = false;
    bool addresses = false;
    bool explain = false;
    bool listPhrases = false;
};

constexpr const char* outputGroup = "Output";

void declareForms(CLI::App& app, CommandLine& line) {
    Options& options = line.options;
    app.add_option("--format", line.format, "table, json (an object a line), csv or tsv [table]")
        ->type_name("FORMAT")
        ->check(oneOf({"table", "json", "csv", "tsv"}))
        ->group(outputGroup);
    app.add_option_function<std::string>("--fields", checkedBy([&](std::string_view v) {
                                             options.parts.fields = parseFields(v);
                                         }),
                                         "Show these fields, in this order, with commas between")
        ->type_name("LIST")
        ->group(outputGroup);
    app.add_flag("--data", options.parts.data, "Show the text that was decided upon")
        ->group(outputGroup);
    app.add_flag("--trace", options.parts.trace, "Show every step on the way to a verdict")
        ->group(outputGroup);
    app.add_flag("--csv-safe", options.parts.isCsvSafe,
                 "For spreadsheets: put an apostrophe before values that would be\nformulas")
        ->group(outputGroup);
    app.add_option_function<std::string>(
           "--by",
           [&](const std::string& what) { options.parts.rows.byRecipient = what == "recipient"; },
           "A row for each message, or for each recipient: message or recipient\n[message]")
        ->type_name("WHAT")
        ->check(oneOf({"message", "recipient"}))
        ->group(outputGroup);
    app.add_flag("--summary", line.summary,
                 "Only count: verdicts, and the most frequent labels, domains and\nphrases")
        ->group(outputGroup);
    app.add_flag("--suppress", line.suppress,
                 "Only list the recipients to stop mailing, each once: address, reason,\ndate, "
                 "evidence and location, with tabs between")
        ->group(outputGroup);
    app.add_flag(
           "--addresses", line.addresses,
           "Only list the failed addresses, sorted, each once, whether the mailbox\nworks or not: "
           "of hard, soft and blocked bounces, or of what --only and\n--not leave, and all that "
           "reports say failed")
        ->group(outputGroup);
    app.add_flag(
           "--explain", line.explain,
           "Explain each verdict: the rule, what it looks for, what to do, the\nsteps, the text")
        ->group(outputGroup);
}

void declareFilters(CLI::App& app, Options& options) {
    app.add_option_function<std::string>(
           "--only", checkedBy([&](std::string_view v) { options.filter.keepOnly(v); }),
           "Show only these verdicts, names or numbers, such as hard,soft")
        ->type_name("LIST")
        ->group(outputGroup);
    app.add_option_function<std::string>(
           "--not", checkedBy([&](std::string_view v) { options.filter.leaveOut(v); }),
           "Show all verdicts but these")
        ->type_name("LIST")
        ->group(outputGroup);
    app.add_option_function<std::string>(
           "--reason", checkedBy([&](std::string_view v) { options.recipients.keepReasons(v); }),
           "Show only recipients who failed for these reasons, such "
           "as\nunknown-mailbox,mailbox-full")
        ->type_name("LIST")
        ->group(outputGroup);
    app.add_option_function<std::string>(
           "--advice", checkedBy([&](std::string_view v) { options.recipients.keepAdvices(v); }),
           "Show only recipients with this advice: suppress, unsubscribe, retry, fix\nor none")
        ->type_name("LIST")
        ->group(outputGroup);
}

void declareTargets(CLI::App& app, CommandLine& line) {
    Options& options = line.options;
    app.add_option("--color", line.color,
                   "auto (in a terminal, unless NO_COLOR is set), always or never [auto]")
        ->type_name("WHEN")
        ->check(oneOf({"auto", "always", "never"}))
        ->group(outputGroup);
    app.add_option("-o,--output", options.outFile,
                   "Write to this file, which appears whole or not at all")
        ->check(fileName())
        ->type_name("FILE")
        ->group(outputGroup);
    app.add_option("--html", options.pageFile,
                   "Write a page for the browser to this file: charts, and a table whose\nrows "
                   "unfold; the summary is printed, unless other output is asked for")
        ->check(fileName())
        ->type_name("FILE")
        ->group(outputGroup);
    app.add_option("--sort-into", options.sortInto,
                   "Deliver copies of what is shown into one Maildir per verdict below DIR")
        ->check(fileName())
        ->type_name("DIR")
        ->group(outputGroup);
    app.add_flag("--exit-type", options.exitType,
                 "For one message: exit with 100 plus the number of its verdict")
        ->group(outputGroup);
}

void declareOther(CLI::App& app, CommandLine& line) {
    constexpr const char* group = "Options that read no message";
    app.set_help_flag("-h,--help", "Print this help")->group(group);
    app.set_version_flag("--version", "bouncecheck " BOUNCECHECK_VERSION, "Print the version")
        ->group(group);
    app.add_flag("--list-phrases", line.listPhrases,
                 "Print every phrase, pattern, marker and rule of the verdicts as JSON\nlines")
        ->group(group);
}

void declare(CLI::App& app, CommandLine& line) {
    declareSources(app, line.options.sources);
    declareMaxMessageSize(app, line.options.sources.maxMessageSize);
    declareVerp(app, line.options.verp);
    declareJobs(app, line.options.jobs);
    declareForms(app, line);
    declareFilters(app, line.options);
    declareTargets(app, line);
    declareOther(app, line);
}

std::string_view formatOf(const CommandLine& line) {
    return line.format ? std::string_view(*line.format) : "table";
}

bool asksForParts(const OutputParts& parts) noexcept {
    return !parts.fields.empty() || parts.data || parts.trace;
}

/// Throws std::invalid_argument for options that do not go together.
void checkTogether(const CommandLine& line) {
    const Options& options = line.options;
    const OutputParts& parts = options.parts;
    const std::string_view format = formatOf(line);
    const bool isColumns = format == "csv" || format == "tsv";
    const int ways = line.summary + line.suppress + line.addresses + line.explain;
    const bool isJsonOfAll = format == "json" && parts.fields.empty();
    const bool hasParts = asksForParts(parts);
    const std::pair<bool, const char*> mistakes[] = {
        {ways > 1, "--summary, --suppress, --addresses and --explain exclude each other"},
        {parts.rows.byRecipient && (ways > 0 || isJsonOfAll),
         "--by recipient is for a table, csv, tsv, or json with --fields"},
        {ways > 0 && hasParts, "--fields, --data and --trace are for lists of messages"},
        {(line.addresses || line.explain) && format != "table",
         "--addresses and --explain have a form of their own"},
        {parts.isCsvSafe && format != "csv", "--csv-safe requires --format csv"},
        {line.summary && isColumns, "--summary is a table or json"},
        {parts.trace && isColumns, "--trace is for a table or json"},
        {options.filter.wantsNone(), "--only and --not leave no verdict"},
    };
    for (const auto& [isMade, problem] : mistakes) {
        if (isMade) throw std::invalid_argument(problem);
    }
}

/// Throws std::invalid_argument for what has no effect beside --list-phrases.
void checkBesideListPhrases(const CLI::App& app) {
    constexpr std::string_view allowed[] = {"--list-phrases", "--output", "--color"};
    for (const CLI::Option* option : app.get_options()) {
        const std::string name = option->get_name();
        if (option->count() > 0 && std::ranges::find(allowed, name) == std::end(allowed)) {
            throw std::invalid_argument("--list-phrases excludes " + name);
        }
    }
}

/// The view that the options ask for, which go together.
View viewOf(const CommandLine& line) {
    if (line.listPhrases) return View::phrases;
    if (line.addresses) return View::addresses;
    if (line.explain) return View::explanations;
    const std::string_view format = formatOf(line);
    if (format == "csv") return View::csv;
    if (format == "tsv") return View::tsv;
    if (format == "json") return line.summary ? View::jsonSummary : View::json;
    // With a page, nobody needs every message on the terminal as well, unless they say so.
    const OutputParts& parts = line.options.parts;
    const bool onlyPage =
        line.options.pageFile && !line.format && !parts.rows.byRecipient && !asksForParts(parts);
    return line.summary || onlyPage ? View::summary : View::table;
}

ColorWhen colorWhen(std::string_view name) noexcept {
    if (name == "always") return ColorWhen::always;
    return name == "never" ? ColorWhen::never : ColorWhen::automatic;
}

/// What --suppress stands for. It chooses rows of its own output only: a page beside it shows
/// all messages. A script that reads lines wants no headings, one that reads CSV expects them.
void chooseSuppressions(CommandLine& line) {
    OutputParts& parts = line.options.parts;
    parts.rows.byRecipient = true;
    parts.rows.filter.keepAdvices("suppress,unsubscribe");
    parts.rows.onlyAddresses = true;
    parts.fields = parseFields("recipient,reason,date,evidence,location");
    if (parts.rows.filter.wantsNone()) {
        throw std::invalid_argument("--suppress is for the advice suppress or unsubscribe");
    }
    if (formatOf(line) == "table") line.format = "tsv";
    parts.headings = formatOf(line) == "csv";
}

/// What to read about a mistake in the arguments.
std::string hintFor(std::span<const char* const> arguments) {
    const bool hasLedger = std::ranges::any_of(arguments, [](std::string_view argument) {
        return argument == "--ledger" || argument.starts_with("--ledger=");
    });
    return hasLedger ? "a command such as scan comes first; see --help" : "see --help";
}

Options optionsOf(CommandLine line) {
    checkSources(line.options.sources);
    checkTogether(line);
    line.options.parts.rows.filter = line.options.recipients;
    if (line.suppress) chooseSuppressions(line);
    line.options.view = viewOf(line);
    line.options.color = colorWhen(line.color);
    checkOutputTargets(line.options);
    return std::move(line.options);
}

}  // namespace

std::optional<Options> parseOptions(int argc, const char* const* argv, std::ostream& out,
                                    std::ostream& err, int& status) {
    CLI::App app(purpose, "bouncecheck");
    CommandLine line;
    declare(app, line);
    const Arguments arguments = {.argc = argc,
                                 .argv = argv,
                                 .help = [&] { return helpText(app); },
                                 .hint = hintFor({argv, static_cast<std::size_t>(argc)}),
                                 .wrongUsage = EXIT_WRONG_USAGE};
    std::optional<Options> options;
    status = readArguments(app, arguments, out, err, [&] {
        if (line.listPhrases) checkBesideListPhrases(app);
        options = optionsOf(std::move(line));
    });
    return options;
}

void lookAtOptions(const std::function<void(const CLI::App& app)>& look) {
    CLI::App app;
    CommandLine line;
    declare(app, line);
    look(app);
}

}  // namespace bouncecheck
