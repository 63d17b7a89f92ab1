#pragma once

#include <iosfwd>

namespace bouncecheck {

/// What the tool tells its caller.
enum ExitStatus : int {
    EXIT_ALL_CLASSIFIED = 0,
    /// Something could not be read or written; the rest was done.
    EXIT_SOME_UNREADABLE = 1,
    EXIT_WRONG_USAGE = 2,
};

/// Runs the tool with the arguments of `main`.
int runTool(int argc, const char* const* argv, std::ostream& out, std::ostream& err);

}  // namespace bouncecheck
