#include "tool/commands/BatchRecorder.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <system_error>
#include <utility>

#include "files/SignalsBlocked.h"
#include "tool/commands/LedgerOptions.h"

namespace bouncecheck {

BatchRecorder::BatchRecorder(ledger::Ledger& file, std::ostream& err)
    : recorder_(file), err_(err), held_(ledger::messageCount(file)) {}

BatchRecorder::~BatchRecorder() {
    if (!thread_.joinable()) return;
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void BatchRecorder::add(ledger::MessageEntry entry) {
    constexpr std::size_t mostReports = 5'000;
    reports_ += 1 + entry.reports.size();
    filling_.push_back(std::move(entry));
    if (reports_ >= mostReports) hand();
}

void BatchRecorder::finish() {
    if (!filling_.empty()) hand();
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return (waiting_.empty() && !isWriting_) || failure_; });
    if (failure_) std::rethrow_exception(failure_);
    report(std::exchange(spared_, {}));
}

/// Hands over what was added, once there is room for it.
void BatchRecorder::hand() {
    constexpr std::size_t mostWaiting = 2;
    Batch batch = std::exchange(filling_, {});
    reports_ = 0;
    if (!thread_.joinable() && !start()) {
        record(batch);
        commit();
        report(std::exchange(spared_, {}));
        return;
    }
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return waiting_.size() < mostWaiting || failure_; });
    if (failure_) std::rethrow_exception(failure_);
    waiting_.push_back(std::move(batch));
    const auto spared = std::exchange(spared_, {});
    lock.unlock();
    changed_.notify_all();
    report(spared);
}

/// False where the system allows no more threads.
bool BatchRecorder::start() {
    // Signals are of the thread that waits for messages.
    const SignalsBlocked blocked;
    try {
        thread_ = std::thread([this] { run(); });
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

void BatchRecorder::run() noexcept {
    try {
        std::unique_lock lock(mutex_);
        for (;;) {
            changed_.wait(lock, [this] { return !waiting_.empty() || isEnding_; });
            if (waiting_.empty()) return;
            const Batch batch = std::move(waiting_.front());
            waiting_.pop_front();
            isWriting_ = true;
            lock.unlock();
            changed_.notify_all();
            record(batch);
            lock.lock();
            if (!waiting_.empty() && !isFull()) continue;
            lock.unlock();
            commit();
            lock.lock();
            isWriting_ = false;
            changed_.notify_all();
        }
    } catch (...) {
        recording_.reset();
        const std::lock_guard lock(mutex_);
        failure_ = std::current_exception();
    }
    changed_.notify_all();
}

void BatchRecorder::record(const Batch& batch) {
    const ledger::Time now = timeNow();
    if (!recording_) recording_.emplace(recorder_.begin());
    ledger::Recorded recorded = recording_->add(batch, now);
    held_ += recorded.fresh;
    for (const ledger::MessageEntry& entry : batch) recorded_ += 1 + entry.reports.size();
    const std::lock_guard lock(mutex_);
    std::ranges::move(recorded.spared, std::back_inserter(spared_));
}

bool BatchRecorder::isFull() const noexcept {
    // Seconds, in which other processes wait.
    constexpr std::size_t most = 200'000;
    return recorded_ >= std::clamp<std::size_t>(held_ / 8, 40'000, most);
}

void BatchRecorder::commit() {
    recording_->commit();
    recording_.reset();
    recorded_ = 0;
    // Others look for the end of a transaction every other millisecond.
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

/// Warns of each once.
void BatchRecorder::report(std::vector<ledger::SparedAddress> spared) {
    std::erase_if(spared, [this](const ledger::SparedAddress& one) {
        return !warned_.insert(one.address).second;
    });
    warnOfSpared(err_, spared);
}

}  // namespace bouncecheck
