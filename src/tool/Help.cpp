#include "tool/Help.h"

#include <CLI/CLI.hpp>
#include <string_view>

#include "tool/commands/Command.h"
#include "tool/output/Fields.h"

namespace bouncecheck {
namespace {

constexpr std::size_t longestLine = 96;
constexpr std::size_t descriptionColumn = 30;

constexpr std::string_view exitStatus =
    "Exit status: 0 when all messages were classified, 1 when something could not be read or "
    "written (the rest is still done), 2 for wrong usage. Mailboxes are never changed.";

/// Appends words, with `indent` blanks before each further line.
void appendWords(std::string& text, std::string_view words, std::size_t indent) {
    constexpr std::string_view blanks = " \n";
    std::size_t column = text.size() - (text.rfind('\n') + 1);
    while (true) {
        words.remove_prefix(std::min(words.find_first_not_of(blanks), words.size()));
        if (words.empty()) return;
        const std::string_view word = words.substr(0, words.find_first_of(blanks));
        if (column + 1 + word.size() > longestLine) {
            text.append("\n").append(indent, ' ');
            column = indent;
        } else if (column > 0 && text.back() != ' ') {
            text += ' ';
            ++column;
        }
        text.append(word);
        column += word.size();
        words.remove_prefix(word.size());
    }
}

/// "-o, --output FILE"
std::string namesOf(const CLI::Option& option) {
    std::string names;
    const auto add = [&](const char* dashes, const std::string& name) {
        names.append(names.empty() ? "" : ", ").append(dashes).append(name);
    };
    for (const std::string& name : option.get_snames()) add("-", name);
    for (const std::string& name : option.get_lnames()) add("--", name);
    if (names.empty()) names = option.get_single_name();  // an argument without dashes
    if (!option.get_type_name().empty()) names.append(" ").append(option.get_type_name());
    return names;
}

/// The description, the line of usage, and all options by their groups.
std::string optionsText(const CLI::App& app, std::string_view arguments) {
    std::string text = app.get_description() + "\n\nUsage: " + app.get_name() + " ";
    text.append(arguments).append("\n");
    std::string group;
    for (const CLI::Option* option : app.get_options()) {
        const bool isOption = !option->get_positional();
        if (isOption && option->get_group() != group) {
            group = option->get_group();
            text.append("\n").append(group).append(":\n");
        }
        if (!isOption) text += '\n';
        std::string line = "  " + namesOf(*option) + "  ";
        if (line.size() < descriptionColumn) line.append(descriptionColumn - line.size(), ' ');
        appendWords(line, option->get_description(), descriptionColumn);
        text.append(line).append("\n");
    }
    return text;
}

}  // namespace

std::string helpText(const CLI::App& app) {
    std::string text = optionsText(app, "[OPTION]... [PATH]...");
    text += "\nFields:";
    for (const Field& field : allFields()) appendWords(text, field.name, 2);
    text += "\n\nCommands on a ledger of bounces, each with its --help:";
    for (const CommandRow& command : allCommands()) appendWords(text, command.name, 2);
    text += "\n\n";
    appendWords(text, exitStatus, 0);
    return text + "\n";
}

std::string commandHelpText(const CLI::App& app, std::string_view arguments,
                            std::string_view closing) {
    std::string text = optionsText(app, arguments) + "\n";
    appendWords(text, closing, 0);
    return text + "\n";
}

}  // namespace bouncecheck
