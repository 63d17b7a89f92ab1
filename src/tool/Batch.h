#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string_view>

#include "tool/Classify.h"
#include "tool/ExitStatus.h"
#include "tool/MaildirSorter.h"
#include "tool/Options.h"
#include "tool/Progress.h"
#include "tool/Terminal.h"
#include "tool/output/Output.h"

namespace bouncecheck {

/// One run over all messages: reads and classifies them, shows and sorts them, and reports
/// what could not be read.
class Batch {
public:
    /// `page` is null when there is none. All have to outlive the batch.
    Batch(const Options& options, std::ostream& out, std::ostream* page, std::ostream& err,
          const Terminal& terminal);

    /// Returns the exit status. What cannot be written throws std::runtime_error.
    int run();

private:
    Wanted wanted() const;
    void show(const Classified& message);
    /// Of a source, by its name, or of a message, by its place.
    template <class Where>
    void noteProblem(const Where& where, std::string_view reason);
    int typeStatus();

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

/// For streams that do not report failures themselves: throws std::runtime_error after one.
void checkWritten(const std::ostream& out);

}  // namespace bouncecheck
