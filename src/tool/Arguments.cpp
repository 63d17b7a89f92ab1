#include "tool/Arguments.h"

#include <algorithm>
#include <ostream>
#include <string_view>
#include <utility>

#include "tool/ExitStatus.h"
#include "tool/output/TerminalText.h"

namespace bouncecheck {
namespace {

/// What stands behind an argument such as "[Gmail]", which CLI11 would take for a list of
/// values, until it has been told from these. No argument holds it.
constexpr char bracketGuard = '\0';

/// The arguments from the last to the first, as CLI11 wants them.
std::vector<std::string> guardedArguments(int argc, const char* const* argv) {
    std::vector<std::string> arguments;
    for (int i = argc - 1; i > 0; --i) {
        std::string& argument = arguments.emplace_back(argv[i]);
        if (argument.starts_with('[') && argument.ends_with(']')) argument += bracketGuard;
    }
    return arguments;
}

bool isGuarded(std::string_view argument) noexcept { return argument.ends_with(bracketGuard); }

std::string withoutGuard(std::string value) {
    if (isGuarded(value)) value.pop_back();
    return value;
}

std::string listed(const std::vector<std::string>& names) {
    std::string all;
    for (const std::string& name : names) all.append(all.empty() ? "" : ", ").append(name);
    return all;
}

std::string nameProblem(const std::string& name) { return name.empty() ? "the name is empty" : ""; }

/// What is wrong with how many values an option has.
std::string countProblem(const CLI::App& app, const CLI::ArgumentMismatch& error) {
    for (const CLI::Option* option : app.get_options()) {
        const bool takesOne = option->get_items_expected_max() == 1 &&
                              option->get_multi_option_policy() == CLI::MultiOptionPolicy::Throw;
        if (takesOne && option->count() > 1) return option->get_name() + " is given more than once";
    }
    return error.what();
}

void print(std::ostream& out, const std::string& text) {
    if (!out.write(text.data(), static_cast<std::streamsize>(text.size())).flush()) {
        throw std::runtime_error("the output could not be written");
    }
}

}  // namespace

int readArguments(CLI::App& app, const Arguments& arguments, std::ostream& out, std::ostream& err,
                  const std::function<void()>& complete) {
    const auto reportWrongUsage = [&](std::string_view problem) {
        err << "bouncecheck: " << printable(problem) << " (" << arguments.hint << ")\n";
        return arguments.wrongUsage;
    };
    std::vector<std::string> guarded = guardedArguments(arguments.argc, arguments.argv);
    if (std::ranges::any_of(guarded, isGuarded)) {
        for (CLI::Option* option : app.get_options()) option->transform(withoutGuard);
    }
    try {
        app.parse(std::move(guarded));
        complete();
    } catch (const CLI::CallForHelp&) {
        print(out, arguments.help());
    } catch (const CLI::CallForVersion& version) {
        print(out, version.what() + std::string("\n"));
    } catch (const CLI::ArgumentMismatch& error) {
        return reportWrongUsage(countProblem(app, error));
    } catch (const CLI::ParseError& error) {
        return reportWrongUsage(error.what());
    } catch (const std::invalid_argument& error) {
        return reportWrongUsage(error.what());
    }
    return EXIT_ALL_CLASSIFIED;
}

// The description of an option says more than those that validators have.

CLI::Validator oneOf(std::vector<std::string> names) {
    return {[names = std::move(names)](const std::string& value) {
                if (std::ranges::find(names, value) != names.end()) return std::string();
                return '"' + value + "\" is unknown; choose from: " + listed(names);
            },
            ""};
}

CLI::Validator fileName() {
    return {[](const std::string& name) {
                return name == "-" ? "\"-\" is no file; write ./- for one of that name"
                                   : nameProblem(name);
            },
            ""};
}

CLI::Validator inputName() { return {nameProblem, ""}; }

}  // namespace bouncecheck
