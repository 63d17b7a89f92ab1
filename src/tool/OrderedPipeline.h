#pragma once

#include <condition_variable>
#include <csignal>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace bouncecheck {

/// Works on items side by side and hands on the results in the order of the items.
///
/// One thread, the owner, pushes and is called back; workers do nothing but the
/// work. Items that are waiting, worked on or waiting for those before them weigh
/// what `push` was told; together they stay below `maxWeight`, a single heavier
/// item excepted. Threads begin with the second item: a single one is not worth
/// them. With one worker the owner does everything itself.
template <class In, class Out>
class OrderedPipeline {
public:
    using Work = std::function<Out(In)>;
    using Sink = std::function<void(Out)>;

    /// Each worker calls `makeWork` once, for a piece of work of its own. What work
    /// or sink throw comes out of `push` or `finish`.
    OrderedPipeline(std::size_t workers, std::size_t maxWeight, std::function<Work()> makeWork,
                    Sink sink)
        : workerCount_(workers),
          maxWeight_(maxWeight),
          makeWork_(std::move(makeWork)),
          sink_(std::move(sink)) {}
    OrderedPipeline(const OrderedPipeline&) = delete;
    OrderedPipeline& operator=(const OrderedPipeline&) = delete;
    ~OrderedPipeline() {
        {
            const std::lock_guard lock(mutex_);
            stop_ = true;
        }
        hasWork_.notify_all();
        for (std::thread& thread : threads_) thread.join();
    }

    void push(In item, std::size_t weight) {
        if (workerCount_ <= 1) {
            workHere(std::move(item));
            return;
        }
        std::unique_lock lock(mutex_);
        while (!slots_.empty() && (slots_.front().isDone || weight_ + weight > maxWeight_)) {
            if (threads_.empty()) startThreads();
            handOnFirst(lock);
        }
        weight_ += weight;
        slots_.emplace_back(std::move(item), weight);
        if (threads_.empty() && slots_.size() > 1) startThreads();
        hasWork_.notify_one();
    }

    /// Hands on all that is left.
    void finish() {
        std::unique_lock lock(mutex_);
        if (threads_.empty() && !slots_.empty()) {
            In only = std::move(slots_.front().item);
            slots_.clear();
            workHere(std::move(only));
        }
        while (!slots_.empty()) handOnFirst(lock);
    }

private:
    struct Slot {
        Slot(In in, std::size_t w) : item(std::move(in)), weight(w) {}

        In item;
        std::size_t weight;
        bool isDone = false;
        std::optional<Out> result;
        std::exception_ptr failure;
    };

    void workHere(In item) {
        if (!ownWork_) ownWork_ = makeWork_();
        sink_(ownWork_(std::move(item)));
    }

    void startThreads() {
        // Signals are the owner's: they have to end what it waits for.
        sigset_t all;
        sigset_t before;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before);
        for (std::size_t i = 0; i < workerCount_; ++i) threads_.emplace_back([this] { run(); });
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
    }

    void handOnFirst(std::unique_lock<std::mutex>& lock) {
        firstDone_.wait(lock, [this] { return slots_.front().isDone; });
        Slot first = std::move(slots_.front());
        slots_.pop_front();
        --taken_;
        weight_ -= first.weight;
        lock.unlock();
        if (first.failure) std::rethrow_exception(first.failure);
        sink_(std::move(*first.result));
        lock.lock();
    }

    void run() {
        const Work work = makeWork_();
        std::unique_lock lock(mutex_);
        for (;;) {
            hasWork_.wait(lock, [this] { return stop_ || taken_ < slots_.size(); });
            if (stop_) return;
            // The reference holds: slots come and go at the ends only.
            Slot& slot = slots_[taken_++];
            lock.unlock();
            std::optional<Out> result;
            std::exception_ptr failure;
            try {
                result.emplace(work(std::move(slot.item)));
            } catch (...) {
                failure = std::current_exception();
            }
            lock.lock();
            slot.result = std::move(result);
            slot.failure = failure;
            slot.isDone = true;
            if (&slot == &slots_.front()) firstDone_.notify_one();
        }
    }

    const std::size_t workerCount_;
    const std::size_t maxWeight_;
    const std::function<Work()> makeWork_;
    const Sink sink_;
    Work ownWork_;

    std::mutex mutex_;
    std::condition_variable hasWork_;
    std::condition_variable firstDone_;
    std::deque<Slot> slots_;
    /// How many of the slots, from the first, a worker has taken.
    std::size_t taken_ = 0;
    std::size_t weight_ = 0;
    bool stop_ = false;
    std::vector<std::thread> threads_;
};

}  // namespace bouncecheck
