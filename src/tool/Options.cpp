#include "tool/Options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <filesystem>
#include <limits>
#include <ostream>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "log/TraceTree.h"
#include "text/Ascii.h"
#include "tool/Run.h"

namespace bouncecheck {
namespace {

/// The size that "500k" or "64M" means, in bytes.
std::size_t parseSize(std::string_view text) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const std::string_view suffix = text.substr(static_cast<std::size_t>(end - text.data()));
    constexpr std::string_view suffixes = "kmg";
    std::size_t shift = 0;
    if (suffix.size() == 1) {
        const std::size_t at = suffixes.find(ascii::toLower(suffix.front()));
        shift = at == std::string_view::npos ? 0 : 10 * (at + 1);
    }
    const bool isSize = error == std::errc() && suffix.size() == (shift > 0 ? 1 : 0) &&
                        number > 0 &&
                        number <= std::numeric_limits<std::size_t>::max() >> 1 >> shift;
    if (!isSize) {
        throw std::invalid_argument("\"" + std::string(text) +
                                    "\" is no size such as 500k, 64m or 1g");
    }
    return number << shift;
}

/// What is wrong with a value becomes a usage error.
template <class Parse>
auto checkedBy(Parse parse) {
    return [parse](const std::string& value) {
        try {
            parse(value);
        } catch (const std::invalid_argument& error) {
            throw CLI::ValidationError(error.what(), CLI::ExitCodes::ValidationError);
        }
    };
}

CLI::Validator oneOf(std::vector<std::string> names) {
    return CLI::IsMember(std::move(names)).description("");  // the option's own tells them
}

void declareInput(CLI::App& app, Options& options) {
    constexpr const char* group = "Input";
    app.add_option(
           "PATH", options.sources.paths,
           "Message and mailbox files, packed or not, Maildirs, or folders of\nthem; '-' or "
           "none reads standard input")
        ->type_name("");
    app.add_option("--from-list", options.sources.listFile,
                   "Read more paths from a file ('-': standard input), one a line")
        ->type_name("FILE")
        ->group(group);
    app.add_flag("-0", options.sources.nulSeparated, "The list has a NUL behind each path")
        ->group(group);
    app.add_option_function<std::string>(
           "--max-message-size",
           checkedBy([&](std::string_view v) { options.sources.maxMessageSize = parseSize(v); }),
           "Tell larger messages and pass them over; k, m, g behind the number [64m]")
        ->type_name("SIZE")
        ->group(group);
    app.add_option("-j", options.jobs, "Classify so many messages at a time [all cores]")
        ->type_name("N")
        ->check(CLI::Range(1, 1024).description(""))
        ->group(group);
}

void declareOutput(CLI::App& app, Options& options) {
    constexpr const char* group = "Output";
    app.add_option("--format", options.format, "table, json (an object a line), csv or tsv [table]")
        ->type_name("FORMAT")
        ->check(oneOf({"table", "json", "csv", "tsv"}))
        ->group(group);
    app.add_option_function<std::string>("--fields", checkedBy([&](std::string_view v) {
                                             options.parts.fields = parseFields(v);
                                         }),
                                         "Show these fields, in this order, with commas between")
        ->type_name("LIST")
        ->group(group);
    app.add_flag("--data", options.parts.data, "Show the text that was decided upon")->group(group);
    app.add_flag("--trace", options.parts.trace, "Show every step on the way to a verdict")
        ->group(group);
    app.add_flag("--summary", options.summary,
                 "Only count: verdicts, and the most frequent labels, domains and\nphrases")
        ->group(group);
    app.add_flag(
           "--addresses", options.addresses,
           "Only list the failed addresses, sorted, each once: of hard, soft and\nblocked bounces, "
           "or of what --only and --not leave, and all that\nreports say failed")
        ->group(group);
    app.add_flag(
           "--explain", options.explain,
           "Explain each verdict: the rule, what it looks for, what to do, the\nsteps, the text")
        ->group(group);
    app.add_option_function<std::string>(
           "--only", checkedBy([&](std::string_view v) { options.filter.keepOnly(v); }),
           "Show only these verdicts, names or numbers, such as hard,soft")
        ->type_name("LIST")
        ->group(group);
    app.add_option_function<std::string>(
           "--not", checkedBy([&](std::string_view v) { options.filter.leaveOut(v); }),
           "Show all verdicts but these")
        ->type_name("LIST")
        ->group(group);
    app.add_option("--color", options.color,
                   "auto (in a terminal, unless NO_COLOR is set), always or never [auto]")
        ->type_name("WHEN")
        ->check(oneOf({"auto", "always", "never"}))
        ->group(group);
    app.add_option("-o,--output", options.outFile,
                   "Write to this file, which appears whole or not at all")
        ->type_name("FILE")
        ->group(group);
    app.add_option("--html", options.pageFile,
                   "Write a page for the browser to this file: charts, and a table whose\nrows "
                   "unfold; the summary is printed, unless other output is asked for")
        ->type_name("FILE")
        ->group(group);
    app.add_option("--sort-into", options.sortInto,
                   "Deliver copies of what is shown into one Maildir per verdict below DIR")
        ->type_name("DIR")
        ->group(group);
    app.add_flag("--exit-type", options.exitType,
                 "For one message: exit with 100 plus the number of its verdict")
        ->group(group);
}

void declare(CLI::App& app, Options& options) {
    app.set_version_flag("--version", "bouncecheck " BOUNCECHECK_VERSION);
    app.add_flag("--list-phrases", options.listPhrases,
                 "Print every phrase, pattern, marker and rule as JSON lines, and stop");
    declareInput(app, options);
    declareOutput(app, options);
}

/// Whether `file` is one that is read: a mailbox is not changed, not even by mistake.
bool isSource(const std::optional<std::string>& file, const SourceOptions& sources) {
    namespace fs = std::filesystem;
    return file && std::ranges::any_of(sources.paths, [&](const std::string& path) {
               std::error_code missing;
               return fs::is_regular_file(path, missing) && fs::equivalent(path, *file, missing);
           });
}

/// What options do not go together.
void checkTogether(const Options& options) {
    const OutputParts& parts = options.parts;
    const bool isColumns = options.format == "csv" || options.format == "tsv";
    const int ways = options.summary + options.addresses + options.explain + options.listPhrases;
    const bool hasParts = !parts.fields.empty() || parts.data || parts.trace;
    const bool hasPaths = !options.sources.paths.empty() || options.sources.listFile;
    const std::pair<bool, const char*> mistakes[] = {
        {options.sources.nulSeparated && !options.sources.listFile, "-0 takes --from-list"},
        {ways > 1, "--summary, --addresses, --explain and --list-phrases go one by one"},
        {ways > 0 && hasParts, "--fields, --data and --trace are for lists of messages"},
        {(options.addresses || options.explain) && options.format != "table",
         "--addresses and --explain have a form of their own"},
        {options.summary && isColumns, "--summary is a table or json"},
        {parts.trace && isColumns, "--trace is for a table or json"},
        {options.listPhrases && (hasPaths || options.pageFile), "--list-phrases reads no messages"},
        {options.pageFile && options.pageFile == options.outFile,
         "--html and --output take a file each"},
        {isSource(options.outFile, options.sources) || isSource(options.pageFile, options.sources),
         "--html and --output do not write to a file that is read"},
    };
    for (const auto& [isMade, problem] : mistakes) {
        if (isMade) throw std::invalid_argument(problem);
    }
}

/// The names of all fields, in lines for the help.
std::string fieldNames() {
    constexpr std::size_t longestLine = 96;
    std::string text = "Fields:";
    std::size_t used = text.size();
    for (const Field& field : allFields()) {
        const bool isFull = used + 1 + field.name.size() > longestLine;
        text.append(isFull ? "\n  " : " ").append(field.name);
        used = isFull ? 2 + field.name.size() : used + 1 + field.name.size();
    }
    return text;
}

}  // namespace

std::optional<Options> parseOptions(int argc, const char* const* argv, std::ostream& out,
                                    std::ostream& err, int& status) {
    const auto tellWrongUsage = [&](const char* problem) {
        err << "bouncecheck: " << escapeControls(problem) << " (see --help)\n";
        status = EXIT_WRONG_USAGE;
    };
    CLI::App app("Tells what returned and automatic e-mail means.", "bouncecheck");
    Options options;
    declare(app, options);
    app.footer([] {
        return fieldNames() +
               "\n\nExit status: 0 when all messages were classified, 1 when something could not "
               "be "
               "read or\nwritten (the rest is still done), 2 for wrong usage. Mailboxes are never "
               "changed.";
    });
    try {
        app.parse(argc, argv);
        checkTogether(options);
        return options;
    } catch (const CLI::Success& request) {  // --help, --version
        status = app.exit(request, out, err);
        if (!out.flush()) throw std::runtime_error("the output could not be written");
    } catch (const CLI::ParseError& error) {
        tellWrongUsage(error.what());
    } catch (const std::invalid_argument& error) {
        tellWrongUsage(error.what());
    }
    return std::nullopt;
}

}  // namespace bouncecheck
