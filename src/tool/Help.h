#pragma once

#include <string>

namespace CLI {
class App;
}

namespace bouncecheck {

/// The text of --help for the options that `app` declares, in lines of at most 96 columns.
/// It is laid out here since releases of CLI11 differ in their layout.
std::string helpText(const CLI::App& app);

}  // namespace bouncecheck
