// Runs a command a number of times, one after the other, and prints the mean
// processor and wall-clock time of a run in seconds.

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <charconv>
#include <chrono>
#include <iostream>
#include <stdexcept>
#include <string>

namespace {

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

/// The standard input and output of the command.
class Redirection {
public:
    explicit Redirection(const char* input) {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, input, O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    }
    Redirection(const Redirection&) = delete;
    Redirection& operator=(const Redirection&) = delete;
    ~Redirection() { posix_spawn_file_actions_destroy(&actions_); }

    const posix_spawn_file_actions_t* actions() const noexcept { return &actions_; }

private:
    posix_spawn_file_actions_t actions_;
};

/// The processor time of one run, that of starting the process included.
double runOnce(char** command, const Redirection& redirection) {
    pid_t child = 0;
    if (posix_spawnp(&child, command[0], redirection.actions(), nullptr, command, environ) != 0) {
        throw std::runtime_error(std::string(command[0]) + ": cannot be started");
    }
    int status = 0;
    rusage usage{};
    if (wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) ||
        WEXITSTATUS(status) != 0) {
        throw std::runtime_error(std::string(command[0]) + ": failed");
    }
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

}  // namespace

int main(int argc, char** argv) {
    int runs = 0;
    if (argc > 3) std::from_chars(argv[1], argv[1] + std::string_view(argv[1]).size(), runs);
    if (runs < 1) {
        std::cerr << "usage: " << argv[0] << " RUNS STDIN-FILE COMMAND...\n";
        return 2;
    }
    try {
        const Redirection redirection(argv[2]);
        runOnce(argv + 3, redirection);  // brings the files into memory
        const auto start = std::chrono::steady_clock::now();
        double processor = 0;
        for (int i = 0; i < runs; ++i) processor += runOnce(argv + 3, redirection);
        const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
        std::cout << processor / runs << '\t' << wall.count() / runs << '\n';
    } catch (const std::exception& error) {
        std::cerr << argv[0] << ": " << error.what() << '\n';
        return 1;
    }
    return 0;
}
