#include "tool/OrderedPipeline.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <numeric>
#include <stdexcept>
#include <thread>
#include <vector>

namespace bouncecheck {
namespace {

using Pipeline = OrderedPipeline<int, int>;

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
                    return [](int item) {
                        waitALittle(item);
                        return item;
                    };
                },
                [&](int result) { results.push_back(result); });
            for (int i = 0; i < count; ++i) pipeline.push(i, 1);
            pipeline.finish();
            std::vector<int> expected(static_cast<std::size_t>(count));
            std::iota(expected.begin(), expected.end(), 0);
            EXPECT_EQ(results, expected) << workers;
        }
    }
}

TEST(OrderedPipeline, StaysBelowTheWeight) {
    std::atomic<int> inFlight = 0;
    int most = 0;
    Pipeline pipeline(
        3, 10, [] { return [](int item) { return item; }; }, [&](int item) { inFlight -= item; });
    for (const int weight : {3, 3, 3, 9, 1, 25, 2, 8, 1, 1}) {
        pipeline.push(weight, static_cast<std::size_t>(weight));
        inFlight += weight;
        if (weight <= 10) most = std::max(most, inFlight.load());
    }
    pipeline.finish();
    EXPECT_EQ(inFlight, 0);
    EXPECT_LE(most, 10);
}

TEST(OrderedPipeline, HandsOutWhatWorkAndSinkThrow) {
    for (const std::size_t workers : {1U, 3U}) {
        for (const bool inSink : {false, true}) {
            const auto failAt5 = [](int item) {
                if (item == 5) throw std::runtime_error("five");
                return item;
            };
            int last = -1;
            Pipeline pipeline(
                workers, 4, [&] { return [&](int i) { return inSink ? i : failAt5(i); }; },
                [&](int i) { last = inSink ? failAt5(i) : i; });
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
