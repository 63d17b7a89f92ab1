#pragma once

#include <cstddef>
#include <memory>
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

class Recorder;

/// A transaction that records messages. Nothing of it is in the ledger before it is committed.
class Recording {
public:
    Recorded add(std::span<const MessageEntry> messages, Time now);
    void commit() { transaction_->commit(); }

private:
    friend class Recorder;
    explicit Recording(Recorder& recorder);

    Recorder* recorder_;
    std::unique_ptr<Transaction> transaction_;
};

/// Writes messages into a ledger, each once however often it comes.
class Recorder {
public:
    /// `ledger` has to outlive it.
    explicit Recorder(Ledger& ledger);

    /// All of them are in the ledger when it returns, or none when it throws.
    Recorded record(std::span<const MessageEntry> messages, Time now);
    /// Begins a transaction, one at a time.
    Recording begin() { return Recording(*this); }

private:
    friend class Recording;
    struct Addresses;

    Recorded add(std::span<const MessageEntry> messages, Time now);

    bool addMessage(const MessageEntry& message, Time now);
    void addReport(const Report& report, std::int64_t message, Time seen, Addresses& addresses);

    Ledger& ledger_;
    Statement addMessage_, addEvent_;
};

/// About how many messages a ledger has, without counting them.
std::size_t messageCount(Ledger& ledger);

}  // namespace bouncecheck::ledger
