#pragma once

#include <iosfwd>

#include "tool/ExitStatus.h"
#include "tool/Terminal.h"

namespace bouncecheck {

/// Runs the tool with the arguments of `main`. A signal that comes while files
/// are being written ends the process, with the status of that signal, once the
/// temporary files are removed.
int runTool(int argc, const char* const* argv, std::ostream& out, std::ostream& err,
            const Terminal& terminal = {});

}  // namespace bouncecheck
