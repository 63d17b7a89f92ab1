#pragma once

#include <cstdio>
#include <cstdlib>

namespace bouncecheck::fuzz {

/// Ends the run, as a sanitizer does, when something does not hold that should.
inline void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "Does not hold: %s\n", what);
    std::abort();
}

}  // namespace bouncecheck::fuzz
