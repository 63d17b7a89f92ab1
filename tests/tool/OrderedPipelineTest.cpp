#include "tool/OrderedPipeline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <new>
#include <stdexcept>
#include <thread>
#include <vector>

namespace bouncecheck {
namespace {

using Pipeline = OrderedPipeline<int>;

void waitALittle(int item) {
    std::this_thread::sleep_for(std::chrono::microseconds(item % 7 * 50));
}

TEST(OrderedPipeline, KeepsTheOrder) {
    for (const std::size_t workers : {1U, 2U, 5U}) {
        for (const int count : {0, 1, 2, 300}) {
            std::vector<int> results;
            Pipeline pipeline(
                workers, 20,
                [] {
                    return [](int& item) {
                        waitALittle(item);
                        item *= 2;
                    };
                },
                [&](int result) { results.push_back(result); });
            for (int i = 0; i < count; ++i) pipeline.push(i, 1);
            pipeline.finish();
            std::vector<int> expected(static_cast<std::size_t>(count));
            std::ranges::generate(expected, [n = -2]() mutable { return n += 2; });
            EXPECT_EQ(results, expected) << workers;
        }
    }
}

TEST(OrderedPipeline, StaysBelowTheWeight) {
    std::atomic<int> inFlight = 0;
    int most = 0;
    Pipeline pipeline(
        3, 10, [] { return [](int&) {}; }, [&](int item) { inFlight -= item; });
    for (const int weight : {3, 3, 3, 9, 1, 25, 2, 8, 1, 1}) {
        pipeline.push(weight, static_cast<std::size_t>(weight));
        inFlight += weight;
        if (weight <= 10) most = std::max(most, inFlight.load());
    }
    pipeline.finish();
    EXPECT_EQ(inFlight, 0);
    EXPECT_LE(most, 10);
}

TEST(OrderedPipeline, LosesNothingWhereWorkersCannotWork) {
    const std::thread::id owner = std::this_thread::get_id();
    std::vector<int> results;
    Pipeline pipeline(
        3, 20,
        [owner] {
            if (std::this_thread::get_id() != owner) throw std::bad_alloc();
            return [](int& item) { item += 1; };
        },
        [&](int result) { results.push_back(result); });
    for (int i = 0; i < 100; ++i) pipeline.push(i, 1);
    pipeline.finish();
    std::vector<int> expected(100);
    std::ranges::generate(expected, [n = 0]() mutable { return ++n; });
    EXPECT_EQ(results, expected);
}

TEST(OrderedPipeline, HandsOutWhatWorkAndSinkThrow) {
    for (const std::size_t workers : {1U, 3U}) {
        for (const bool inSink : {false, true}) {
            const auto failAt5 = [](int item) {
                if (item == 5) throw std::runtime_error("five");
            };
            int last = -1;
            Pipeline pipeline(
                workers, 4,
                [&] {
                    return [&](int& i) {
                        if (!inSink) failAt5(i);
                    };
                },
                [&](int i) {
                    if (inSink) failAt5(i);
                    last = i;
                });
            EXPECT_THROW(
                {
                    for (int i = 0; i < 50; ++i) pipeline.push(i, 1);
                    pipeline.finish();
                },
                std::runtime_error);
            EXPECT_EQ(last, 4);
        }
    }
}

}  // namespace
}  // namespace bouncecheck
