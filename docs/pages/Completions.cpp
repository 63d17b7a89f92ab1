#include "pages/Completions.h"

#include <string_view>
#include <vector>

#include "pages/CommandTexts.h"
#include "tool/commands/Command.h"

namespace bouncecheck {
namespace {

bool isPath(const OptionText& option) { return option.value == "FILE" || option.value == "DIR"; }

std::string without(std::string text, std::string_view unwanted) {
    std::erase_if(text, [&](char c) { return unwanted.find(c) != std::string_view::npos; });
    return text;
}

/// `text` within single quotes of any of the shells.
std::string inQuotes(const std::string& text) { return "'" + without(text, "'") + "'"; }

/// The names of the options that `wanted` takes, with blanks between.
template <class Wanted>
std::string namesOf(const CommandText& command, Wanted wanted) {
    std::string names;
    for (const OptionText& option : command.options) {
        if (!wanted(option)) continue;
        for (const std::string& name : option.names)
            names.append(names.empty() ? "" : " ").append(name);
    }
    return names;
}

std::string commandNames() {
    std::string names;
    for (const CommandRow& row : allCommands())
        names.append(names.empty() ? "" : " ").append(row.name);
    return names;
}

}  // namespace

std::string bashCompletion() {
    std::string text =
        "# Completes the arguments of bouncecheck in bash.\n"
        "_bouncecheck() {\n"
        "    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}\n"
        "    local options values commands=\n"
        "    [ \"$COMP_CWORD\" -ne 1 ] || commands=\"" +
        commandNames() +
        "\"\n"
        "    case ${COMP_WORDS[1]} in\n";
    std::string others;
    for (const CommandText& command : allCommandTexts()) {
        const std::string row =
            "        " + (command.name.empty() ? "*" : command.name) + ")\n            options=\"" +
            namesOf(command, [](const OptionText&) { return true; }) + "\"\n            values=\"" +
            namesOf(command, [](const OptionText& o) { return !o.value.empty() && !isPath(o); }) +
            "\"\n            ;;\n";
        (command.name.empty() ? others : text) += row;
    }
    return text + others +
           "    esac\n"
           "    COMPREPLY=()\n"
           "    # What is no path has to be known.\n"
           "    case \" $values \" in *\" $before \"*) return ;; esac\n"
           "    case $word in\n"
           "        -*) mapfile -t COMPREPLY < <(compgen -W \"$options\" -- \"$word\") ;;\n"
           "        *) mapfile -t COMPREPLY < <(compgen -W \"$commands\" -- \"$word\"; compgen -f "
           "-- \"$word\") ;;\n"
           "    esac\n"
           "}\n"
           "complete -o filenames -F _bouncecheck bouncecheck\n";
}

std::string zshCompletion() {
    std::string text =
        "#compdef bouncecheck\n"
        "# Completes the arguments of bouncecheck in zsh.\n"
        "if ((CURRENT == 2)); then\n"
        "    local -a commands=(\n";
    std::string cases;
    for (const CommandText& command : allCommandTexts()) {
        if (!command.name.empty()) {
            text += "        " + inQuotes(command.name + ":" + command.purpose) + "\n";
        }
        std::string specs;
        for (const OptionText& option : command.options) {
            const std::string value = option.value.empty() ? ""
                                      : isPath(option)     ? ":" + option.value + ":_files"
                                                           : ":" + option.value + ": ";
            for (const std::string& name : option.names) {
                specs.append("            '*").append(name).append("[");
                specs.append(without(option.description, "'[]:")).append("]");
                specs.append(value).append("' \\\n");
            }
        }
        cases += "    " + (command.name.empty() ? "*" : command.name) +
                 ")\n        _arguments -s \\\n" + specs +
                 "            '*:file:_files'\n        ;;\n";
    }
    // The case for all others is the last.
    const std::size_t end = cases.find("        ;;\n") + 11;
    return text + "    )\n    _describe command commands\nfi\ncase $words[2] in\n" +
           cases.substr(end) + cases.substr(0, end) + "esac\n";
}

std::string fishCompletion() {
    std::string text = "# Completes the arguments of bouncecheck in fish.\n";
    const std::string names = commandNames();
    for (const CommandText& command : allCommandTexts()) {
        const std::string condition = command.name.empty()
                                          ? "not __fish_seen_subcommand_from " + names
                                          : "__fish_seen_subcommand_from " + command.name;
        if (!command.name.empty()) {
            text += "complete -c bouncecheck -n __fish_is_first_arg -a " + command.name + " -d " +
                    inQuotes(command.purpose) + "\n";
        }
        for (const OptionText& option : command.options) {
            text += "complete -c bouncecheck -n '" + condition + "'";
            for (const std::string& name : option.names) {
                const bool isLong = name.starts_with("--");
                text += isLong ? " -l " + name.substr(2) : " -s " + name.substr(1);
            }
            if (!option.value.empty()) text += isPath(option) ? " -r -F" : " -x";
            text += " -d " + inQuotes(option.description) + "\n";
        }
    }
    return text;
}

}  // namespace bouncecheck
