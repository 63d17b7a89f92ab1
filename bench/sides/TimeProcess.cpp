// Runs a command a number of times, one after the other, and prints the mean
// processor and wall-clock time of a run in seconds.

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <charconv>
#include <exception>
#include <iostream>
#include <string_view>

#include "bench/support/ChildProcess.h"

namespace {

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
        bouncecheck::bench::runProcess(argv + 3,
                                       redirection.actions());  // brings the files into memory
        double processor = 0;
        double wall = 0;
        for (int i = 0; i < runs; ++i) {
            const bouncecheck::bench::ProcessUse use =
                bouncecheck::bench::runProcess(argv + 3, redirection.actions());
            processor += use.processor;
            wall += use.wall;
        }
        std::cout << processor / runs << '\t' << wall / runs << '\n';
    } catch (const std::exception& error) {
        std::cerr << argv[0] << ": " << error.what() << '\n';
        return 1;
    }
    return 0;
}
