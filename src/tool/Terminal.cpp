#include "tool/Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>

#include "text/Ascii.h"

namespace bouncecheck {

Terminal standardTerminal() {
    Terminal terminal = {.isOut = isatty(STDOUT_FILENO) != 0, .isErr = isatty(STDERR_FILENO) != 0};
    winsize size = {};
    if (terminal.isOut && ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
        terminal.width = size.ws_col;
    }
    return terminal;
}

Style styleFor(ColorWhen color, const Terminal& terminal, bool toFile) {
    const bool inTerminal = terminal.isOut && !toFile;
    const bool isPlain = !ascii::viewOf(std::getenv("NO_COLOR")).empty() ||
                         ascii::viewOf(std::getenv("TERM")) == "dumb";
    const bool isColored =
        color == ColorWhen::always || (color == ColorWhen::automatic && inTerminal && !isPlain);
    return {.color = isColored, .width = inTerminal ? terminal.width : 0};
}

}  // namespace bouncecheck
