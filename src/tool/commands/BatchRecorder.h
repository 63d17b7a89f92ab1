#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <mutex>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "ledger/Recorder.h"

namespace bouncecheck {

/// Records many messages, in a thread of its own beside those who read the next ones. A
/// transaction takes what is there, up to a limit, since other processes wait for its end. Each
/// changes pages all over the file, so the limit grows with the ledger: what is written stays a
/// small multiple of the file.
class BatchRecorder {
public:
    /// The ledger is used by nobody else until `finish` has returned.
    BatchRecorder(ledger::Ledger& file, std::ostream& err);
    BatchRecorder(const BatchRecorder&) = delete;
    BatchRecorder& operator=(const BatchRecorder&) = delete;
    ~BatchRecorder();

    /// A failure to record what was added before comes out of both.
    void add(ledger::MessageEntry entry);
    /// Returns when all that was added is recorded.
    void finish();

private:
    using Batch = std::vector<ledger::MessageEntry>;

    void hand();
    bool start();
    void run() noexcept;
    void record(const Batch& batch);
    bool isFull() const noexcept;
    void commit();
    void report(std::vector<ledger::SparedAddress> spared);

    ledger::Recorder recorder_;
    std::ostream& err_;
    Batch filling_;
    std::size_t reports_ = 0;
    std::set<std::string> warned_;

    // --- Of the thread that writes ------------------------------------------
    std::optional<ledger::Recording> recording_;
    /// How many messages the ledger has, and how many messages and reports the transaction.
    std::size_t held_;
    std::size_t recorded_ = 0;

    // --- Shared -------------------------------------------------------------
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Batch> waiting_;
    std::vector<ledger::SparedAddress> spared_;
    std::exception_ptr failure_;
    bool isWriting_ = false;
    bool isEnding_ = false;
    std::thread thread_;
};

}  // namespace bouncecheck
