#include "tool/Batch.h"

#include <new>
#include <ostream>
#include <stdexcept>
#include <utility>

#include "tool/ClassifyAll.h"
#include "tool/Problem.h"
#include "tool/View.h"
#include "tool/sources/Sources.h"

namespace bouncecheck {
namespace {

/// Rows on the terminal show how far the work is.
bool showsProgress(const Options& options, const Terminal& terminal) {
    const bool hasRows = terminal.isOut && !options.outFile && growsByMessage(options.view);
    return terminal.isErr && !hasRows;
}

}  // namespace

void checkWritten(const std::ostream& out) {
    if (!out) throw std::runtime_error("the output could not be written");
}

Batch::Batch(const Options& options, std::ostream& out, std::ostream* page, std::ostream& err,
             const Terminal& terminal)
    : options_(options),
      out_(out),
      err_(err),
      progress_(err, showsProgress(options, terminal)),
      output_(makeOutput(options.view, out, options.parts, options.filter.wantsAll(),
                         styleFor(options.color, terminal, options.outFile.has_value()))),
      page_(page ? makeHtmlOutput(*page) : nullptr) {
    if (options.sortInto) sorter_.emplace(*options.sortInto);
}

Wanted Batch::wanted() const {
    Wanted wanted = output_->wanted();
    if (page_) wanted = wanted | page_->wanted();
    wanted.bytes = sorter_.has_value();
    wanted.recipients = wanted.recipients || !options_.recipients.wantsAll();
    return wanted;
}

int Batch::run() {
    classifyAll<Classified>(
        options_.sources, options_.jobs,
        [wanted = wanted(), this] {
            return [classifier = std::make_shared<ToolClassifier>(wanted, options_.verp)](
                       Classified& message) { classifier->classify(message); };
        },
        [this](const Classified& message) { show(message); },
        [this](std::string_view source, std::string_view reason) { noteProblem(source, reason); });
    progress_.clear();
    output_->finish();
    if (page_) page_->finish();
    if (sorter_) sorter_->finish();
    return options_.exitType ? typeStatus() : status_;
}

/// Shows the message, or reports why that cannot be done. A failed allocation is no
/// reason to end the run; what is no message's own, such as a full disk, is.
void Batch::show(const Classified& message) {
    progress_.update(message.size, message.progress);
    if (!message.problem.empty()) {
        noteProblem(message.place, message.problem);
        return;
    }
    ++messages_;
    lastType_ = message.type;
    if (!options_.filter.wants(message.type)) return;
    if (!options_.recipients.wantsAny(message.recipients)) return;
    try {
        if (sorter_) sorter_->deliver(message);
        output_->show(message);
        if (page_) page_->show(message);
    } catch (const std::bad_alloc&) {
        noteProblem(message.place, outOfMemory);
    }
    checkWritten(out_);
}

template <class Where>
void Batch::noteProblem(const Where& where, std::string_view reason) {
    progress_.clear();
    reportProblem(err_, where, reason);
    status_ = EXIT_SOME_UNREADABLE;
}

int Batch::typeStatus() {
    if (status_ != EXIT_ALL_CLASSIFIED) return status_;
    if (messages_ == 1) return EXIT_TYPE_BASE + lastType_;
    err_ << "bouncecheck: --exit-type takes one message, not " << messages_ << '\n';
    return EXIT_SOME_UNREADABLE;
}

}  // namespace bouncecheck
