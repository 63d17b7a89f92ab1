#include "tool/Run.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <memory>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

#include "log/TraceTree.h"
#include "tool/Classify.h"
#include "tool/ListPhrases.h"
#include "tool/OrderedPipeline.h"
#include "tool/Output.h"
#include "tool/sources/Sources.h"

namespace bouncecheck {
namespace {

struct Options {
    std::vector<std::string> paths;
    std::string format = "table";
    OutputParts parts;
    bool listPhrases = false;
};

void declare(CLI::App& app, Options& options) {
    app.set_version_flag("--version", "bouncecheck " BOUNCECHECK_VERSION);
    CLI::Option* paths =
        app.add_option("PATH", options.paths,
                       "Message files, or folders of them; '-' or none reads one message from "
                       "standard input");
    app.add_option("--format", options.format, "How to show the verdicts")
        ->check(CLI::IsMember({"table", "json"}))
        ->capture_default_str();
    app.add_flag("--trace", options.parts.trace, "Show every step on the way to a verdict");
    app.add_flag("--data", options.parts.data, "Show the text that was decided upon");
    app.add_flag("--list-phrases", options.listPhrases,
                 "Print every phrase, pattern, marker and rule as JSON lines, and stop")
        ->excludes(paths);
    app.footer(
        "Exit status: 0 when all messages were classified, 1 when something could not be read\n"
        "(the rest is still done), 2 for wrong usage.");
}

int classifyAll(Options options, std::ostream& out, std::ostream& err) {
    if (options.paths.empty()) {
        if (isatty(STDIN_FILENO)) err << "bouncecheck: reading a message from the terminal\n";
        options.paths.emplace_back("-");
    }
    const auto output = options.format == "json" ? makeJsonOutput(out, options.parts)
                                                 : makeTableOutput(out, options.parts);
    int status = EXIT_ALL_CLASSIFIED;
    const auto tellProblem = [&](const std::string& source, const std::string& reason) {
        err << "bouncecheck: " << escapeControls(source) << ": " << reason << '\n';
        status = EXIT_SOME_UNREADABLE;
    };
    const Wanted wanted = {.data = options.parts.data, .trace = options.parts.trace};
    const std::size_t jobs = std::max(1u, std::thread::hardware_concurrency());
    OrderedPipeline<SourceMessage, Classified> pipeline(
        jobs, jobs * 4000000,
        [&] {
            const auto classifier = std::make_shared<Classifier>(wanted);
            return [classifier](SourceMessage m) { return classifier->classify(std::move(m)); };
        },
        [&](Classified message) { output->show(message); });
    SourceOptions sources;
    sources.paths = options.paths;
    readSources(
        sources,
        [&](SourceMessage message) {
            const std::size_t weight = message.bytes.size() + 4096;
            pipeline.push(std::move(message), weight);
        },
        tellProblem);
    pipeline.finish();
    output->finish();
    return status;
}

int runWith(Options options, std::ostream& out, std::ostream& err) {
    int status = EXIT_ALL_CLASSIFIED;
    if (options.listPhrases) {
        listPhrases(out);
    } else {
        status = classifyAll(std::move(options), out, err);
    }
    if (!out.flush()) {
        err << "bouncecheck: the output could not be written\n";
        return EXIT_SOME_UNREADABLE;
    }
    return status;
}

}  // namespace

int runTool(int argc, const char* const* argv, std::ostream& out, std::ostream& err) {
    try {
        CLI::App app("Tells what returned and automatic e-mail means.", "bouncecheck");
        Options options;
        declare(app, options);
        try {
            app.parse(argc, argv);
        } catch (const CLI::Success& request) {  // --help, --version
            return app.exit(request, out, err);
        } catch (const CLI::ParseError& error) {
            err << "bouncecheck: " << escapeControls(error.what()) << " (see --help)\n";
            return EXIT_WRONG_USAGE;
        }
        return runWith(std::move(options), out, err);
    } catch (const std::exception& error) {
        err << "bouncecheck: " << error.what() << '\n';
        return EXIT_SOME_UNREADABLE;
    }
}

}  // namespace bouncecheck
