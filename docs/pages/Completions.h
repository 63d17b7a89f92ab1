#pragma once

#include <string>

namespace bouncecheck {

// What shells read to complete the options and commands of the tool, made from what the command
// line declares.

std::string bashCompletion();
std::string zshCompletion();
std::string fishCompletion();

}  // namespace bouncecheck
