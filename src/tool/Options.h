#pragma once

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "tool/RecipientFilter.h"
#include "tool/Terminal.h"
#include "tool/TypeFilter.h"
#include "tool/View.h"
#include "tool/output/Output.h"
#include "tool/sources/Sources.h"

namespace CLI {
class App;
}

namespace bouncecheck {

/// What the command line asks for.
struct Options {
    SourceOptions sources;
    View view = View::table;
    OutputParts parts;
    TypeFilter filter;
    /// Messages have to have one of these recipients.
    RecipientFilter recipients;
    std::vector<VerpPattern> verp;
    bool exitType = false;
    ColorWhen color = ColorWhen::automatic;
    /// Threads; 0 for as many as there are cores.
    std::size_t jobs = 0;
    std::optional<std::string> outFile;
    std::optional<std::string> pageFile;
    std::optional<std::string> sortInto;
};

/// Reads the arguments of `main`. Nothing when the work ends here: help or version
/// were printed, or one line about wrong usage, and `status` is that to exit with.
std::optional<Options> parseOptions(int argc, const char* const* argv, std::ostream& out,
                                    std::ostream& err, int& status);

/// Calls `look` with the options that there are without a command.
void lookAtOptions(const std::function<void(const CLI::App& app)>& look);

}  // namespace bouncecheck
