#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <new>
#include <system_error>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include "files/SignalsBlocked.h"

namespace bouncecheck {

/// Works on items in place, side by side, and hands them on in their order.
///
/// One thread, the owner, pushes and is called back; workers do nothing but the
/// work. Items go to them by the batch, since waking a thread takes longer than most
/// messages. Batches that are waiting, worked on or waiting for those before them
/// weigh what `push` was told of their items; together they stay below `maxWeight`, a
/// single heavier item excepted, and the one that is being filled comes on top.
/// Threads begin with the second batch: a single one is not worth them. With one
/// worker the owner does everything itself.
///
/// No item is lost when memory runs out or threads cannot be had: what cannot wait for
/// a worker is worked on by the owner, in its turn. For that, moving an item must not
/// fail. What work or sink throw comes out of `push` or `finish` and ends the whole.
template <class Item>
class OrderedPipeline {
public:
    using Work = std::function<void(Item&)>;
    /// May take the item apart.
    using Sink = std::function<void(Item&)>;

    /// `makeWork` is called for the owner at once, and once by each worker, for a piece
    /// of work of its own.
    OrderedPipeline(std::size_t workers, std::size_t maxWeight, std::function<Work()> makeWork,
                    Sink sink)
        : workerCount_(workers),
          maxWeight_(maxWeight),
          batchWeight_(maxWeight / (workers * batchesPerWorker)),
          makeWork_(std::move(makeWork)),
          sink_(std::move(sink)),
          ownWork_(makeWork_()) {}
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

    void push(Item item, std::size_t weight) {
        if (workerCount_ <= 1 || !fillIn(item)) {
            finish();
            ownWork_(item);
            sink_(item);
            return;
        }
        filling_.weight += weight;
        if (filling_.weight >= batchWeight_) sendBatch();
    }

    /// Hands on all that is left.
    void finish() {
        if (!threads_.empty()) sendBatch();
        handOnAll(std::unique_lock(mutex_));
    }

private:
    static_assert(std::is_nothrow_move_constructible_v<Item>);
    static constexpr std::size_t batchesPerWorker = 16;

    struct Batch {
        std::vector<Item> items;
        std::size_t weight = 0;
        bool isDone = false;
        /// How many of the items, from the first, a worker has done.
        std::size_t worked = 0;
        /// Of the work on the item behind those, if it failed.
        std::exception_ptr failure;
    };

    /// False, and `item` as it was, when memory has run out.
    bool fillIn(Item& item) {
        try {
            filling_.items.push_back(std::move(item));
            return true;
        } catch (const std::bad_alloc&) {
            return false;
        }
    }

    void sendBatch() {
        std::unique_lock lock(mutex_);
        while (!batches_.empty() &&
               (batches_.front().isDone || weight_ + filling_.weight > maxWeight_)) {
            if (threads_.empty()) startThreads();
            handOnFirst(lock);
        }
        const std::size_t weight = filling_.weight;
        try {
            batches_.push_back(std::move(filling_));
        } catch (const std::bad_alloc&) {
            handOnAll(std::move(lock));
            return;
        }
        filling_ = {};
        weight_ += weight;
        if (threads_.empty() && batches_.size() > 1) startThreads();
        hasWork_.notify_one();
    }

    void startThreads() {
        // Signals are the owner's: they have to end what it waits for.
        const SignalsBlocked blocked;
        try {
            threads_.reserve(workerCount_);
            while (threads_.size() < workerCount_) threads_.emplace_back([this] { run(); });
        } catch (const std::system_error&) {
            // Where the system allows fewer, those do all the work, or the owner does.
        } catch (const std::bad_alloc&) {
        }
    }

    /// Waits for the first batch, if there is anyone to work on it, and hands it on.
    void handOnFirst(std::unique_lock<std::mutex>& lock) {
        if (!threads_.empty()) {
            firstDone_.wait(lock, [this] { return batches_.front().isDone; });
            --taken_;
        }
        Batch first = std::move(batches_.front());
        batches_.pop_front();
        weight_ -= first.weight;
        lock.unlock();
        handOn(std::move(first));
        lock.lock();
    }

    void handOnAll(std::unique_lock<std::mutex> lock) {
        while (!batches_.empty()) handOnFirst(lock);
        lock.unlock();
        handOn(std::exchange(filling_, {}));
    }

    void handOn(Batch batch) {
        for (std::size_t i = 0; i < batch.items.size(); ++i) {
            if (i >= batch.worked) {
                if (batch.failure) std::rethrow_exception(batch.failure);
                ownWork_(batch.items[i]);
            }
            sink_(batch.items[i]);
        }
    }

    void run() {
        Work work;
        std::unique_lock lock(mutex_);
        for (;;) {
            hasWork_.wait(lock, [this] { return stop_ || taken_ < batches_.size(); });
            if (stop_) return;
            // The reference holds: batches come and go at the ends only.
            Batch& batch = batches_[taken_++];
            lock.unlock();
            workOn(batch, work);
            lock.lock();
            batch.isDone = true;
            if (&batch == &batches_.front()) firstDone_.notify_one();
        }
    }

    /// Leaves the batch to the owner when `work` cannot be made.
    void workOn(Batch& batch, Work& work) noexcept {
        try {
            if (!work) work = makeWork_();
        } catch (...) {
            return;
        }
        try {
            for (Item& item : batch.items) {
                work(item);
                ++batch.worked;
            }
        } catch (...) {
            batch.failure = std::current_exception();
        }
    }

    const std::size_t workerCount_;
    const std::size_t maxWeight_;
    const std::size_t batchWeight_;
    const std::function<Work()> makeWork_;
    const Sink sink_;
    const Work ownWork_;
    Batch filling_;

    std::mutex mutex_;
    std::condition_variable hasWork_;
    std::condition_variable firstDone_;
    std::deque<Batch> batches_;
    /// How many of the batches, from the first, a worker has taken.
    std::size_t taken_ = 0;
    std::size_t weight_ = 0;
    bool stop_ = false;
    std::vector<std::thread> threads_;
};

}  // namespace bouncecheck
