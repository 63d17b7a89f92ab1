#pragma once

#include <bouncecheck/bouncecheck.h>

#include <cstddef>
#include <span>
#include <string_view>

#include "ArrowColumn.h"

namespace bouncecheck::python {

/// The results for messages as columns: those of docs/result.schema.json, by the same names but
/// for `verdict` ("name") and `rule` ("label"). What JSON leaves out is null.
class ArrowResults {
public:
    /// `withLedger` adds the column `ledger`: what a ledger tells messages apart by and dates them
    /// by, and which recipients are addresses that mail can be sent to.
    explicit ArrowResults(bool withLedger);

    /// Calls nothing of Python.
    void add(std::string_view bytes, std::span<const VerpPattern> verp, Classifier& classifier);
    /// The result for no message: null in each column.
    void addNone();

    std::size_t textBytes() const noexcept { return columns_.textBytes(); }
    /// One record with all columns.
    ArrowColumn& columns() noexcept { return columns_; }

private:
    bool withLedger_;
    ArrowColumn columns_;
};

}  // namespace bouncecheck::python
