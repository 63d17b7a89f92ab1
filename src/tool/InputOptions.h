#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

#include <bouncecheck/VerpPattern.h>
#include "tool/sources/Sources.h"

namespace CLI {
class App;
}

namespace bouncecheck {

// The options about what is read. What they fill has to outlive the parsing.

void declareSources(CLI::App& app, SourceOptions& sources);
/// Throws std::invalid_argument for what does not go together.
void checkSources(const SourceOptions& sources);
/// Where nothing is named, reads standard input, and says so on `err` when that is a terminal.
void readStandardInputElse(SourceOptions& sources, std::ostream& err);
/// `effect` says what becomes of larger messages.
void declareMaxMessageSize(CLI::App& app, std::size_t& size,
                           const std::string& effect = "Report and skip larger messages");
void declareVerp(CLI::App& app, std::vector<VerpPattern>& patterns);
/// Threads; 0 for as many as there are cores.
void declareJobs(CLI::App& app, std::size_t& jobs);

}  // namespace bouncecheck
