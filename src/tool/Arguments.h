#pragma once

#include <functional>
#include <iosfwd>
#include <stdexcept>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace bouncecheck {

/// The arguments of `main`, and what is told of them.
struct Arguments {
    int argc;
    const char* const* argv;
    /// The text that --help prints.
    std::function<std::string()> help;
    /// Where to read more, behind each problem.
    std::string hint;
    /// The exit status of wrong usage.
    int wrongUsage;
};

/// Reads the arguments by what `app` declares, then calls `complete`, which throws
/// std::invalid_argument for those that do not go together. Where the work ends, since help or
/// version were printed or one line about wrong usage, `complete` is not called or has thrown.
/// Returns the exit status up to here.
int readArguments(CLI::App& app, const Arguments& arguments, std::ostream& out, std::ostream& err,
                  const std::function<void()>& complete);

/// What is wrong with a value becomes a usage error.
template <class Parse>
auto checkedBy(Parse parse) {
    return [parse](const std::string& value) {
        try {
            parse(value);
        } catch (const std::invalid_argument& error) {
            throw CLI::ValidationError(error.what(), CLI::ExitCodes::ValidationError);
        }
    };
}

CLI::Validator oneOf(std::vector<std::string> names);
/// Of a file or a folder, which may be missing. "-", which others take for a standard stream, is
/// none.
CLI::Validator fileName();
/// Of a file to read, or "-" for standard input.
CLI::Validator inputName();

}  // namespace bouncecheck
