#pragma once

#include <cstddef>
#include <functional>
#include <utility>

#include "tool/Classify.h"
#include "tool/OrderedPipeline.h"
#include "tool/sources/Sources.h"

namespace bouncecheck {

/// The cores that this process may use, which can be fewer than there are.
std::size_t availableCores();

/// Reads the messages of `sources`, works on `jobs` of them at a time (0: on as many as there are
/// cores) and hands them on in their order. An `Item` is made of what is known of a message as it
/// was read; OrderedPipeline says what `makeWork` and `sink` may do.
template <class Item>
void classifyAll(const SourceOptions& sources, std::size_t jobs,
                 std::function<typename OrderedPipeline<Item>::Work()> makeWork,
                 typename OrderedPipeline<Item>::Sink sink, const OnProblem& onProblem) {
    const std::size_t workers = jobs > 0 ? jobs : availableCores();
    // Enough to keep a worker busy while the one before it has a large message.
    constexpr std::size_t bytesPerWorker = std::size_t{4} << 20;
    OrderedPipeline<Item> pipeline(workers, workers * bytesPerWorker, std::move(makeWork),
                                   std::move(sink));
    const auto push = [&](SourceMessage message) {
        constexpr std::size_t ofEmptyMessage = 4096;
        const std::size_t weight = message.bytes.size() + ofEmptyMessage;
        pipeline.push(Item(asRead(std::move(message))), weight);
    };
    readSources(sources, push, onProblem);
    pipeline.finish();
}

}  // namespace bouncecheck
