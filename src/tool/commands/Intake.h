#pragma once

#include <cstddef>
#include <span>
#include <string>

#include <bouncecheck/VerpPattern.h>
#include "ledger/Entries.h"
#include "tool/Classify.h"
#include "tool/commands/LedgerEntry.h"
#include "tool/sources/InputStream.h"

namespace bouncecheck {

/// Makes of a stream that is one message, whatever it looks like, what a ledger records. What is
/// too large, or no mail, is a fact about it.
class Intake {
public:
    /// `verp` has to outlive it. `maxMessageSize` is in bytes.
    Intake(std::size_t maxMessageSize, std::span<const VerpPattern> verp)
        : maxMessageSize_(maxMessageSize), classifier_(wantedByLedger, verp) {}

    /// Reads `stream` to its end. Throws ReadError, and std::bad_alloc.
    ledger::MessageEntry read(InputStream& stream, std::string place, ledger::Time now);

private:
    std::size_t maxMessageSize_;
    ToolClassifier classifier_;
};

}  // namespace bouncecheck
