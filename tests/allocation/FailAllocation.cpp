#include "allocation/FailAllocation.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

/// Allocations until one fails.
std::atomic<long> left = -1;
std::atomic<bool> failureLasts = false;
std::atomic<bool> failAll = false;
std::atomic<long> count = 0;

}  // namespace

long bouncecheck::allocationCount() noexcept { return count; }

void bouncecheck::failAllocation(long number, bool lasts) noexcept {
    failureLasts = lasts;
    left = number;
}

bool bouncecheck::takeBackFailure() noexcept {
    failAll = false;
    return left.exchange(-1) >= 0;
}

void* operator new(std::size_t size) {
    count.fetch_add(1, std::memory_order_relaxed);
    // Only one thread counts down to -1, and nobody beyond.
    if (left.load(std::memory_order_relaxed) >= 0 && left-- == 0) {
        failAll = failureLasts.load();
        throw std::bad_alloc();
    }
    if (failAll.load(std::memory_order_relaxed)) throw std::bad_alloc();
    if (void* memory = std::malloc(size > 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
