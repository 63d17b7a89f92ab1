#include "bench/support/ChildProcess.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <stdexcept>
#include <string>

namespace bouncecheck::bench {
namespace {

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

}  // namespace

ProcessUse runProcess(char* const* command, const posix_spawn_file_actions_t* actions) {
    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    if (posix_spawnp(&child, command[0], actions, nullptr, command, environ) != 0) {
        throw std::runtime_error(std::string(command[0]) + ": cannot be started");
    }
    int status = 0;
    rusage usage{};
    if (wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) ||
        WEXITSTATUS(status) != 0) {
        throw std::runtime_error(std::string(command[0]) + ": failed");
    }
    const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
    return {.processor = seconds(usage.ru_utime) + seconds(usage.ru_stime),
            .wall = wall.count(),
            .peakMemory = static_cast<std::size_t>(usage.ru_maxrss) * 1024};
}

}  // namespace bouncecheck::bench
