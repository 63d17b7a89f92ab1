#pragma once

#include <string>
#include <string_view>

namespace CLI {
class App;
}

namespace bouncecheck {

/// The text of --help for the options that `app` declares, in lines of at most 96 columns.
/// It is laid out here since releases of CLI11 differ in their layout.
std::string helpText(const CLI::App& app);

/// The same for a command. `arguments` is what stands behind its name, `closing` what is said
/// below the options.
std::string commandHelpText(const CLI::App& app, std::string_view arguments,
                            std::string_view closing);

}  // namespace bouncecheck
