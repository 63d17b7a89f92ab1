#include "tool/ClassifyAll.h"

#include <sched.h>

#include <algorithm>

namespace bouncecheck {

std::size_t availableCores() {
    cpu_set_t cores;
    if (sched_getaffinity(0, sizeof cores, &cores) != 0) return 1;
    return static_cast<std::size_t>(std::max(1, CPU_COUNT(&cores)));
}

}  // namespace bouncecheck
