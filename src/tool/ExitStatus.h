#pragma once

namespace bouncecheck {

/// What the tool reports to its caller.
enum ExitStatus : int {
    EXIT_ALL_CLASSIFIED = 0,
    /// Something could not be read or written; the rest was done.
    EXIT_SOME_UNREADABLE = 1,
    EXIT_WRONG_USAGE = 2,
    /// With --exit-type, the number of the verdict is added to this.
    EXIT_TYPE_BASE = 100,
};

}  // namespace bouncecheck
