#include "pages/CommandTexts.h"

#include <CLI/CLI.hpp>

#include "tool/Options.h"
#include "tool/commands/Command.h"

namespace bouncecheck {
namespace {

std::string inOneLine(std::string text) {
    for (char& c : text) {
        if (c == '\n') c = ' ';
    }
    return text;
}

std::vector<OptionText> optionsOf(const CLI::App& app) {
    std::vector<OptionText> options;
    for (const CLI::Option* option : app.get_options()) {
        if (option->get_positional()) continue;
        OptionText& text = options.emplace_back();
        for (const std::string& name : option->get_snames()) text.names.push_back("-" + name);
        for (const std::string& name : option->get_lnames()) text.names.push_back("--" + name);
        if (option->get_expected_max() > 0) text.value = option->get_type_name();
        text.description = inOneLine(option->get_description());
    }
    return options;
}

}  // namespace

std::vector<CommandText> allCommandTexts() {
    std::vector<CommandText> texts(1);
    lookAtOptions([&](const CLI::App& app) { texts.front().options = optionsOf(app); });
    for (const CommandRow& row : allCommands()) {
        CLI::App app;
        const auto command = row.make();
        declareCommand(*command, app);
        texts.push_back({.name = std::string(row.name),
                         .arguments = std::string(row.arguments),
                         .purpose = std::string(row.purpose),
                         .closing = std::string(row.closing),
                         .options = optionsOf(app)});
    }
    return texts;
}

}  // namespace bouncecheck
