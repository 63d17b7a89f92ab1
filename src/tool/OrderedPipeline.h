#pragma once

#include <condition_variable>
#include <csignal>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace bouncecheck {

/// Works on items side by side and hands on the results in the order of the items.
///
/// One thread, the owner, pushes and is called back; workers do nothing but the
/// work. Items go to them by the batch, since waking a thread takes longer than most
/// messages. Batches that are waiting, worked on or waiting for those before them
/// weigh what `push` was told of their items; together they stay below `maxWeight`, a
/// single heavier item excepted, and the one that is being filled comes on top.
/// Threads begin with the second batch: a single one is not worth them. With one
/// worker the owner does everything itself.
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
          batchWeight_(maxWeight / (workers * batchesPerWorker)),
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
        filling_.items.push_back(std::move(item));
        filling_.weight += weight;
        if (filling_.weight >= batchWeight_) sendBatch();
    }

    /// Hands on all that is left.
    void finish() {
        if (threads_.empty()) {
            if (!batches_.empty()) workHere(std::move(batches_.front()));
            batches_.clear();
            workHere(std::move(filling_));
            return;
        }
        sendBatch();
        std::unique_lock lock(mutex_);
        while (!batches_.empty()) handOnFirst(lock);
    }

private:
    static constexpr std::size_t batchesPerWorker = 16;

    struct Batch {
        std::vector<In> items;
        std::size_t weight = 0;
        bool isDone = false;
        /// Those of the items before the one that failed, if any did.
        std::vector<Out> results;
        std::exception_ptr failure;
    };

    void workHere(In item) {
        if (!ownWork_) ownWork_ = makeWork_();
        sink_(ownWork_(std::move(item)));
    }

    void workHere(Batch batch) {
        for (In& item : batch.items) workHere(std::move(item));
    }

    void sendBatch() {
        Batch batch = std::exchange(filling_, {});
        std::unique_lock lock(mutex_);
        while (!batches_.empty() &&
               (batches_.front().isDone || weight_ + batch.weight > maxWeight_)) {
            if (threads_.empty()) startThreads();
            handOnFirst(lock);
        }
        weight_ += batch.weight;
        batches_.push_back(std::move(batch));
        if (threads_.empty() && batches_.size() > 1) startThreads();
        hasWork_.notify_one();
    }

    /// Keeps all signals from this thread, and from those that it starts.
    class SignalsBlocked {
    public:
        SignalsBlocked() noexcept {
            sigset_t all;
            sigfillset(&all);
            pthread_sigmask(SIG_SETMASK, &all, &before_);
        }
        SignalsBlocked(const SignalsBlocked&) = delete;
        SignalsBlocked& operator=(const SignalsBlocked&) = delete;
        ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

    private:
        sigset_t before_;
    };

    void startThreads() {
        // Signals are the owner's: they have to end what it waits for.
        const SignalsBlocked blocked;
        threads_.reserve(workerCount_);
        try {
            while (threads_.size() < workerCount_) threads_.emplace_back([this] { run(); });
        } catch (const std::system_error&) {
            // Where the system allows fewer, those do all the work.
            if (threads_.empty()) throw;
        }
    }

    void handOnFirst(std::unique_lock<std::mutex>& lock) {
        firstDone_.wait(lock, [this] { return batches_.front().isDone; });
        Batch first = std::move(batches_.front());
        batches_.pop_front();
        --taken_;
        weight_ -= first.weight;
        lock.unlock();
        for (Out& result : first.results) sink_(std::move(result));
        if (first.failure) std::rethrow_exception(first.failure);
        lock.lock();
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
            try {
                if (!work) work = makeWork_();
                batch.results.reserve(batch.items.size());
                for (In& item : batch.items) batch.results.push_back(work(std::move(item)));
            } catch (...) {
                batch.failure = std::current_exception();
            }
            lock.lock();
            batch.isDone = true;
            if (&batch == &batches_.front()) firstDone_.notify_one();
        }
    }

    const std::size_t workerCount_;
    const std::size_t maxWeight_;
    const std::size_t batchWeight_;
    const std::function<Work()> makeWork_;
    const Sink sink_;
    Work ownWork_;
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
