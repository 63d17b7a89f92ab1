#include "tool/Run.h"

#include <sched.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <memory>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "log/TraceTree.h"
#include "text/Ascii.h"
#include "tool/Classify.h"
#include "tool/Interrupt.h"
#include "tool/ListPhrases.h"
#include "tool/MaildirSorter.h"
#include "tool/Options.h"
#include "tool/OrderedPipeline.h"
#include "tool/OutputFile.h"
#include "tool/Progress.h"
#include "tool/output/Output.h"
#include "tool/sources/Sources.h"

namespace bouncecheck {
namespace {

Style styleFor(const Options& options, const Terminal& terminal) {
    const bool inTerminal = terminal.isOut && !options.outFile;
    const bool isPlain = !ascii::viewOf(std::getenv("NO_COLOR")).empty() ||
                         ascii::viewOf(std::getenv("TERM")) == "dumb";
    const bool color =
        options.color == "always" || (options.color == "auto" && inTerminal && !isPlain);
    return {.color = color, .width = inTerminal ? terminal.width : 0};
}

/// Whether only a summary is printed: with a page, nobody needs every message on the
/// terminal as well.
bool isSummary(const Options& options) {
    const OutputParts& parts = options.parts;
    const bool wantsRows = options.addresses || options.explain || options.format != "table" ||
                           !parts.fields.empty() || parts.data || parts.trace;
    return options.summary || (options.pageFile && !wantsRows);
}

/// Whether what is printed grows with every message, and so tells how far the work is.
bool showsRows(const Options& options) {
    return !options.outFile && !options.addresses && !isSummary(options);
}

std::unique_ptr<Output> makeOutput(const Options& options, std::ostream& out, Style style) {
    if (options.addresses) return makeAddressOutput(out, options.filter.wantsAll());
    if (options.explain) return makeExplainOutput(out, style);
    const bool isJson = options.format == "json";
    if (isSummary(options)) {
        return makeSummaryOutput(out, isJson ? SummaryForm::json : SummaryForm::text, style);
    }
    if (isJson) return makeJsonOutput(out, options.parts);
    if (options.format == "csv") return makeCsvOutput(out, options.parts);
    if (options.format == "tsv") return makeTsvOutput(out, options.parts);
    return makeTableOutput(out, options.parts, style);
}

/// The cores that this process may use, which can be fewer than there are.
std::size_t availableCores() {
    cpu_set_t cores;
    if (sched_getaffinity(0, sizeof cores, &cores) != 0) return 1;
    return static_cast<std::size_t>(std::max(1, CPU_COUNT(&cores)));
}

/// A pipe that nobody reads ends the run as its signal does.
[[noreturn]] void failToWrite() {
    throwIfInterrupted();
    throw std::runtime_error("the output could not be written");
}

/// One run over all messages.
class Batch {
public:
    /// `page` is null when there is none.
    Batch(const Options& options, std::ostream& out, std::ostream* page, std::ostream& err,
          const Terminal& terminal)
        : options_(options),
          out_(out),
          err_(err),
          progress_(err, terminal.isErr && !(terminal.isOut && showsRows(options))),
          output_(makeOutput(options, out, styleFor(options, terminal))),
          page_(page ? makeHtmlOutput(*page) : nullptr) {
        if (options.sortInto) sorter_.emplace(*options.sortInto);
    }

    int run() {
        Wanted wanted = output_->wanted();
        if (page_) wanted = wanted | page_->wanted();
        wanted.bytes = sorter_.has_value();
        const std::size_t jobs = options_.jobs > 0 ? options_.jobs : availableCores();
        // Enough to keep a worker busy while the one before it has a large message.
        constexpr std::size_t bytesPerWorker = std::size_t{4} << 20;
        OrderedPipeline<SourceMessage, Classified> pipeline(
            jobs, jobs * bytesPerWorker,
            [wanted] {
                return [classifier = std::make_shared<Classifier>(wanted)](SourceMessage message) {
                    return classifier->classify(std::move(message));
                };
            },
            [this](Classified message) { show(message); });
        readSources(
            options_.sources,
            [&](SourceMessage message) {
                constexpr std::size_t ofEmptyMessage = 4096;
                const std::size_t weight = message.bytes.size() + ofEmptyMessage;
                pipeline.push(std::move(message), weight);
            },
            [this](const std::string& source, const std::string& reason) {
                tellProblem(source, reason);
            });
        pipeline.finish();
        progress_.clear();
        output_->finish();
        if (page_) page_->finish();
        if (sorter_) sorter_->finish();
        return options_.exitType ? typeStatus() : status_;
    }

private:
    void show(const Classified& message) {
        throwIfInterrupted();
        progress_.update(message.size, message.progress);
        if (!message.problem.empty()) {
            tellProblem(placeOf(message.source, message.index, message.inMailbox), message.problem);
            return;
        }
        ++messages_;
        lastType_ = message.type;
        if (!options_.filter.wants(message.type)) return;
        if (sorter_) sorter_->deliver(message);
        output_->show(message);
        if (page_) page_->show(message);
        if (!out_) failToWrite();
    }

    void tellProblem(const std::string& source, const std::string& reason) {
        progress_.clear();
        err_ << "bouncecheck: " << escapeControls(source) << ": " << reason << '\n';
        status_ = EXIT_SOME_UNREADABLE;
    }

    int typeStatus() {
        if (status_ != EXIT_ALL_CLASSIFIED) return status_;
        if (messages_ == 1) return EXIT_TYPE_BASE + lastType_;
        err_ << "bouncecheck: --exit-type takes one message, not " << messages_ << '\n';
        return EXIT_SOME_UNREADABLE;
    }

    const Options& options_;
    std::ostream& out_;
    std::ostream& err_;
    Progress progress_;
    std::unique_ptr<Output> output_;
    std::unique_ptr<Output> page_;
    std::optional<MaildirSorter> sorter_;
    int status_ = EXIT_ALL_CLASSIFIED;
    std::size_t messages_ = 0;
    int lastType_ = 0;
};

int writeTo(std::ostream& out, std::ostream* page, std::ostream& err, const Options& options,
            const Terminal& terminal) {
    int status = EXIT_ALL_CLASSIFIED;
    if (options.listPhrases) {
        listPhrases(out);
    } else {
        status = Batch(options, out, page, err, terminal).run();
    }
    if (!out.flush()) failToWrite();
    return status;
}

int runWith(Options options, std::ostream& out, std::ostream& err, const Terminal& terminal) {
    SourceOptions& sources = options.sources;
    if (sources.paths.empty() && !sources.listFile && !options.listPhrases) {
        if (isatty(STDIN_FILENO)) err << "bouncecheck: reading a message from the terminal\n";
        sources.paths.emplace_back("-");
    }
    if (options.outFile || options.pageFile || options.sortInto) noteSignals();
    std::optional<OutputFile> file;
    std::optional<OutputFile> page;
    if (options.outFile) file.emplace(*options.outFile);
    if (options.pageFile) page.emplace(*options.pageFile);
    // What is written below a source is no source.
    if (file) sources.excluded.push_back(file->temporary());
    if (page) sources.excluded.push_back(page->temporary());
    if (options.sortInto) sources.excluded.push_back(*options.sortInto);
    const int status = writeTo(file ? file->stream() : out, page ? &page->stream() : nullptr, err,
                               options, terminal);
    if (file || page) throwIfInterrupted();
    if (file) file->commit();
    if (page) page->commit();
    return status;
}

}  // namespace

Terminal standardTerminal() {
    Terminal terminal = {.isOut = isatty(STDOUT_FILENO) != 0, .isErr = isatty(STDERR_FILENO) != 0};
    winsize size = {};
    if (terminal.isOut && ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
        terminal.width = size.ws_col;
    }
    return terminal;
}

int runTool(int argc, const char* const* argv, std::ostream& out, std::ostream& err,
            const Terminal& terminal) {
    try {
        int status = EXIT_ALL_CLASSIFIED;
        std::optional<Options> options = parseOptions(argc, argv, out, err, status);
        if (!options) return status;
        return runWith(std::move(*options), out, err, terminal);
    } catch (const Interrupted&) {
        err.flush();
        endByNotedSignal();
    } catch (const std::exception& error) {
        err << "bouncecheck: " << escapeControls(error.what()) << '\n';
        return EXIT_SOME_UNREADABLE;
    }
}

}  // namespace bouncecheck
