#pragma once

#include <cstddef>
#include <vector>

#include <bouncecheck/VerpPattern.h>
#include "tool/sources/Sources.h"

namespace CLI {
class App;
}

namespace bouncecheck {

// The options about what is read. What they fill has to outlive the parsing.

void declareSources(CLI::App& app, SourceOptions& sources);
void declareMaxMessageSize(CLI::App& app, std::size_t& size);
void declareVerp(CLI::App& app, std::vector<VerpPattern>& patterns);
/// Threads; 0 for as many as there are cores.
void declareJobs(CLI::App& app, std::size_t& jobs);

}  // namespace bouncecheck
