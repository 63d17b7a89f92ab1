// Classifies messages while one allocation after the other fails: each time the
// failure comes out as std::bad_alloc, nothing is lost, and the classifier says of the
// next message what it says otherwise.
//
//   failing_allocations FILE...

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <new>
#include <string>
#include <utility>

#include "bounce/BounceCheck.h"
#include "log/LogTrace.h"
#include "mime/Email2.h"

namespace {

/// Allocations until one fails; none does while it is negative.
long left = -1;

std::pair<int, std::string> classify(bouncecheck::BounceCheck& check, const std::string& message) {
    bouncecheck::Email2 email(message);
    bouncecheck::StringBuffer address;
    bouncecheck::StringBuffer data;
    bouncecheck::LogTrace log;
    const int type = check.checkEmail(email, address, data, log);
    return {type, std::string(address.view())};
}

/// False when the classifier said something else after a failure.
bool survives(const std::string& message) {
    bouncecheck::BounceCheck check;
    const auto expected = classify(check, message);
    for (long failing = 0;; ++failing) {
        left = failing;
        try {
            const bool same = classify(check, message) == expected;
            const bool none = std::exchange(left, -1) >= 0;
            // A log that fails is no failure of the classifier.
            if (!same) return false;
            if (none) return true;
        } catch (const std::bad_alloc&) {
            left = -1;
        }
        if (classify(check, message) != expected) return false;
    }
}

}  // namespace

void* operator new(std::size_t size) {
    if (left == 0) {
        left = -2;
        throw std::bad_alloc();
    }
    if (left > 0) --left;
    if (void* memory = std::malloc(size > 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        std::ifstream file(argv[i], std::ios::binary);
        const std::string message{std::istreambuf_iterator<char>(file), {}};
        if (survives(message)) continue;
        std::fprintf(stderr, "%s: another verdict after a failed allocation\n", argv[i]);
        return 1;
    }
    return argc > 1 ? 0 : 2;
}
