#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

namespace bouncecheck {

enum class Dialect { csv, tsv };

/// Writes lines of values as CSV or TSV; Output.h says how. A long value is written a few KB at a
/// time.
class SeparatedWriter {
public:
    /// `out` must outlive it. `isCsvSafe`: put an apostrophe before values that spreadsheets take
    /// for formulas.
    SeparatedWriter(std::ostream& out, Dialect dialect, bool isCsvSafe = false)
        : out_(out), dialect_(dialect), isCsvSafe_(isCsvSafe) {}

    void value(std::string_view value);
    void endLine();
    /// Ends a line that cannot be completed; of it stays what was written already.
    void abandonLine();

private:
    std::ostream& out_;
    Dialect dialect_;
    bool isCsvSafe_;
    bool isFirst_ = true;
    bool isPartlyOut_ = false;
    /// What the stream does not have yet.
    std::string line_;
};

}  // namespace bouncecheck
