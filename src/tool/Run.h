#pragma once

#include <cstddef>
#include <iosfwd>

namespace bouncecheck {

/// What the tool tells its caller.
enum ExitStatus : int {
    EXIT_ALL_CLASSIFIED = 0,
    /// Something could not be read or written; the rest was done.
    EXIT_SOME_UNREADABLE = 1,
    EXIT_WRONG_USAGE = 2,
    /// With --exit-type, the number of the verdict is added to this.
    EXIT_TYPE_BASE = 100,
};

/// What is known of where the output goes.
struct Terminal {
    bool isOut = false;
    bool isErr = false;
    /// Columns of the terminal that `out` is.
    std::size_t width = 80;
};

/// That of this process.
Terminal standardTerminal();

/// Runs the tool with the arguments of `main`. A signal that comes while files
/// are being written ends the process, with the status of that signal, once they
/// are put away.
int runTool(int argc, const char* const* argv, std::ostream& out, std::ostream& err,
            const Terminal& terminal = {});

}  // namespace bouncecheck
