#pragma once

#include <string>
#include <vector>

namespace bouncecheck {

struct OptionText {
    /// With their dashes.
    std::vector<std::string> names;
    /// "FILE"; empty for a flag.
    std::string value;
    /// In one line.
    std::string description;
};

/// A command and what it takes; without a name, the tool without a command, of which only the
/// options are given.
struct CommandText {
    std::string name;
    std::string arguments;
    std::string purpose;
    /// What its help says below the options, with the exit status at the end.
    std::string closing;
    std::vector<OptionText> options;
};

/// What the command line declares, the tool without a command first.
std::vector<CommandText> allCommandTexts();

}  // namespace bouncecheck
