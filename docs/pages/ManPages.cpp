#include "pages/ManPages.h"

#include <algorithm>
#include <set>
#include <string_view>

#include "pages/CommandTexts.h"
#include "text/Ascii.h"

namespace bouncecheck {
namespace {

/// `text` as mdoc takes it within a line: no escapes, and dashes that can be copied.
std::string escaped(std::string_view text) {
    std::string out;
    for (const char c : text) {
        if (c == '\\') {
            out += "\\e";
        } else if (c == '-') {
            out += "\\-";
        } else {
            out += c;
        }
    }
    return out;
}

/// Text, each sentence on a line of its own, and none of them a request.
void addText(std::string& page, std::string_view text) {
    while (!text.empty()) {
        constexpr std::string_view between = ". ";
        const std::size_t end = std::min(text.find(between), text.size() - 1) + 1;
        const std::string_view line = text.substr(0, end);
        if (line.starts_with('.') || line.starts_with('\'')) page += "\\&";
        page += escaped(line) + "\n";
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

std::string inCapitals(std::string text) {
    for (char& c : text) c = ascii::toUpper(c);
    return text;
}

void addOption(std::string& page, const OptionText& option) {
    page += ".It ";
    for (const std::string& name : option.names) {
        page.append(&name == option.names.data() ? "Fl " : " , Fl ");
        page += escaped(std::string_view(name).substr(1));
    }
    if (!option.value.empty()) page += " Ar " + escaped(option.value);
    page += "\n";
    addText(page, option.description);
}

std::string pageOf(const CommandText& command, std::set<std::string> names) {
    constexpr std::string_view title = "Exit status: ";
    const std::size_t status = command.closing.find(title);
    std::string purpose = command.purpose;
    if (purpose.ends_with('.')) purpose.pop_back();
    std::string page = ".Dd November 22, 2026\n.Dt BOUNCECHECK-" + inCapitals(command.name) +
                       " 1\n.Os\n.Sh NAME\n.Nm bouncecheck-" + command.name + "\n.Nd " +
                       escaped(purpose) + "\n.Sh SYNOPSIS\n.Nm bouncecheck " + command.name + "\n" +
                       escaped(command.arguments) + "\n.Sh DESCRIPTION\n";
    addText(page, command.purpose);
    addText(page, command.closing.substr(0, status));
    page +=
        ".Pa docs/ledger.md\nin the sources tells what a ledger is, and when an address is "
        "suppressed.\n.Pp\nThe options are:\n.Bl -tag -width Ds\n";
    for (const OptionText& option : command.options) addOption(page, option);
    page += ".El\n.Sh EXIT STATUS\n";
    addText(page, command.closing.substr(status + title.size()));
    page += ".Sh SEE ALSO\n.Xr bouncecheck 1";
    names.erase(command.name);
    for (const std::string& other : names) page += " ,\n.Xr bouncecheck-" + other + " 1";
    return page + "\n";
}

}  // namespace

std::vector<MadePage> manPages() {
    std::vector<CommandText> commands = allCommandTexts();
    commands.erase(commands.begin());  // the tool without one has a page that people write
    std::set<std::string> names;
    for (const CommandText& command : commands) names.insert(command.name);
    std::vector<MadePage> pages;
    for (const CommandText& command : commands) {
        pages.push_back({"man/bouncecheck-" + command.name + ".1", pageOf(command, names)});
    }
    return pages;
}

}  // namespace bouncecheck
