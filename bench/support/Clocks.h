#pragma once

#include <chrono>
#include <ctime>

namespace bouncecheck::bench {

/// The time in seconds that this process has spent on the processor: unlike the
/// clock on the wall, it does not count what others do meanwhile. It may move in
/// steps of some milliseconds.
inline double cpuSeconds() noexcept {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// The time in seconds on the clock on the wall, for what takes little.
inline double wallSeconds() noexcept {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
}

/// Measures from its making on, whatever else the machine does: by the processor
/// time once its steps do not matter, before that by the clock on the wall.
class Stopwatch {
public:
    double seconds() const noexcept {
        constexpr double manySteps = 0.2;
        const double processor = cpuSeconds() - cpuStart_;
        return processor >= manySteps ? processor : wallSeconds() - wallStart_;
    }

private:
    double cpuStart_ = cpuSeconds();
    double wallStart_ = wallSeconds();
};

/// The processor time of one call of `pass`: the mean over as many calls as fill
/// a quarter of a second, after one that warms up.
template <class Pass>
double secondsPerPass(Pass&& pass) {
    constexpr double atLeast = 0.25;
    pass();
    const double start = cpuSeconds();
    for (double passes = 1;; ++passes) {
        pass();
        const double spent = cpuSeconds() - start;
        if (spent >= atLeast) return spent / passes;
    }
}

}  // namespace bouncecheck::bench
