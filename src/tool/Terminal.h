#pragma once

#include <cstddef>

#include "tool/output/TerminalText.h"

namespace bouncecheck {

/// What is known of where the output goes.
struct Terminal {
    bool isOut = false;
    bool isErr = false;
    /// Columns of the terminal that `out` is.
    std::size_t width = 80;
};

/// That of this process.
Terminal standardTerminal();

/// When output is in colors; automatically in a terminal that has them.
enum class ColorWhen { automatic, always, never };

/// The style of what goes to `terminal`, or `toFile`. Reads NO_COLOR and TERM.
Style styleFor(ColorWhen color, const Terminal& terminal, bool toFile);

}  // namespace bouncecheck
