#pragma once

#include <string>
#include <vector>

#include "tool/Options.h"

namespace bouncecheck {

/// The files that a run writes to: standard output, or what takes its place, and the page.
std::vector<std::string> outputTargets(const Options& options);

/// Throws std::invalid_argument, with a line for people, when two outputs go to one file,
/// or an output to what the command line names to be read: whatever names lead there.
void checkOutputTargets(const Options& options);

}  // namespace bouncecheck
