#pragma once

#include <spawn.h>

#include <cstddef>

namespace bouncecheck::bench {

/// What one run of a command took, its start included.
struct ProcessUse {
    /// In seconds.
    double processor = 0;
    double wall = 0;
    /// The most memory that was resident at a time, in bytes.
    std::size_t peakMemory = 0;
};

/// Runs a command, whose arguments end in a null, to its end. Throws
/// std::runtime_error when it cannot be started or fails.
ProcessUse runProcess(char* const* command, const posix_spawn_file_actions_t* actions = nullptr);

}  // namespace bouncecheck::bench
