#pragma once

#include <cstddef>
#include <map>
#include <span>
#include <vector>

#include "ledger/AddressStates.h"
#include "ledger/Entries.h"
#include "ledger/Ledger.h"

namespace bouncecheck::ledger {

/// What came of messages that were to be recorded.
struct Recorded {
    /// How many the ledger did not have.
    std::size_t fresh = 0;
    std::vector<SparedAddress> spared;
};

/// Writes messages into a ledger, each once however often it comes.
class Recorder {
public:
    /// `ledger` has to outlive it.
    explicit Recorder(Ledger& ledger);

    /// All of them are in the ledger when it returns, or none when it throws.
    Recorded record(std::span<const MessageEntry> messages, Time now);

private:
    bool addMessage(const MessageEntry& message, Time now);
    void addReport(const Report& report, std::int64_t message, Time seen, AddressStates& states);

    Ledger& ledger_;
    Statement addMessage_, addEvent_;
    /// Whose states may have changed, with the reports against them that are new.
    std::map<std::int64_t, Counted> touched_;
};

}  // namespace bouncecheck::ledger
