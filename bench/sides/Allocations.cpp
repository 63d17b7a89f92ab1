// Heap allocations for a message of about 4 KB, by stage: medians over the
// messages of a folder that come closest to that size.

#include <algorithm>
#include <cstdlib>
#include <new>

#include <bouncecheck/LogNull.h>
#include <bouncecheck/LogTrace.h>
#include <bouncecheck/classes/BounceCheck.h>
#include <bouncecheck/classes/Email2.h>
#include "bench/sides/Sides.h"

namespace {

std::size_t allocations = 0;

void* counted(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) { return counted(size); }
void* operator new[](std::size_t size) { return counted(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace bouncecheck::bench {
namespace {

constexpr std::size_t typicalBytes = 4096;
constexpr std::size_t howMany = 21;

struct Counts {
    std::size_t parse;
    std::size_t classify;
    std::size_t trace;
};

template <class Log>
std::size_t countClassify(Email2& email) {
    const std::size_t before = allocations;
    Log log;
    BounceCheck check;
    StringBuffer address;
    StringBuffer data;
    check.checkEmail(email, address, data, log);
    return allocations - before;
}

Counts countFor(const std::string& bytes) {
    std::string first = bytes;
    std::string second = bytes;
    const std::size_t before = allocations;
    Email2 email(std::move(first));
    const std::size_t parse = allocations - before;
    Email2 another(std::move(second));  // nothing of it is decoded yet
    const std::size_t classify = countClassify<LogNull>(email);
    return {parse, classify, countClassify<LogTrace>(another)};
}

void printMedian(std::string_view figure, std::vector<Counts>& counts, std::size_t Counts::*count) {
    const auto middle = counts.begin() + static_cast<std::ptrdiff_t>(counts.size() / 2);
    std::ranges::nth_element(counts, middle, {}, count);
    std::cout << figure << '\t' << (*middle).*count << '\n';
}

void countIn(const std::string& folder) {
    std::vector<StoredMessage> messages = readMessages(folder);
    std::ranges::stable_sort(messages, {}, [](const StoredMessage& message) {
        const std::size_t size = message.bytes.size();
        return std::max(size, typicalBytes) - std::min(size, typicalBytes);
    });
    messages.resize(std::min(messages.size(), howMany));
    countFor(messages.front().bytes);  // what is made once per process
    std::vector<Counts> counts;
    for (const StoredMessage& message : messages) counts.push_back(countFor(message.bytes));
    printMedian("allocations-parse", counts, &Counts::parse);
    printMedian("allocations-classify", counts, &Counts::classify);
    printMedian("allocations-traced", counts, &Counts::trace);
    std::cout << "allocations-bytes\t" << totalBytes(messages) / messages.size() << '\n';
}

}  // namespace
}  // namespace bouncecheck::bench

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " FOLDER\n";
        return 2;
    }
    try {
        bouncecheck::bench::countIn(argv[1]);
    } catch (const std::exception& error) {
        std::cerr << argv[0] << ": " << error.what() << '\n';
        return 1;
    }
    return 0;
}
