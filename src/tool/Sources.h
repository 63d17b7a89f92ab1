#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bouncecheck {

/// Takes one message: its name for people, and its bytes.
using OnMessage = std::function<void(std::string source, std::string bytes)>;
/// Takes the name of what could not be read, and why.
using OnProblem = std::function<void(const std::string& source, const std::string& reason)>;

/// Reads the messages that `paths` name, in order: "-" is standard input, a file
/// is one message, a folder those of all files below it, in the order of their
/// names. Symbolic links to folders inside a folder are not followed. What cannot
/// be read is told and passed over.
void readSources(const std::vector<std::string>& paths, const OnMessage& onMessage,
                 const OnProblem& onProblem);

}  // namespace bouncecheck
