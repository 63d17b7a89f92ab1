#include "tool/InputOptions.h"

#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

#include "text/Ascii.h"
#include "tool/Arguments.h"

namespace bouncecheck {
namespace {

constexpr const char* group = "Input";
/// What stands for it among paths.
constexpr std::string_view standardInput = "-";

/// The size that "500k" or "64M" means, in bytes.
std::size_t parseSize(std::string_view text) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const std::string_view suffix = text.substr(static_cast<std::size_t>(end - text.data()));
    constexpr std::string_view suffixes = "kmg";
    std::size_t shift = 0;
    if (suffix.size() == 1) {
        const std::size_t at = suffixes.find(ascii::toLower(suffix.front()));
        shift = at == std::string_view::npos ? 0 : 10 * (at + 1);
    }
    const bool isSize = error == std::errc() && suffix.size() == (shift > 0 ? 1 : 0) &&
                        number > 0 &&
                        number <= std::numeric_limits<std::size_t>::max() >> 1 >> shift;
    if (!isSize) {
        throw std::invalid_argument("\"" + std::string(text) +
                                    "\" is not a size; examples: 500k, 64m, 1g");
    }
    return number << shift;
}

VerpPattern verpOf(const std::string& pattern) {
    if (auto parsed = VerpPattern::parse(pattern)) return *std::move(parsed);
    throw CLI::ValidationError(
        "\"" + pattern + "\" is no form of an address with {local} and {domain}, or {tag}",
        CLI::ExitCodes::ValidationError);
}

}  // namespace

void declareSources(CLI::App& app, SourceOptions& sources) {
    app.add_option(
           "PATH", sources.paths,
           "Message and mailbox files, Maildirs, tar and zip archives, or folders\nof them, "
           "compressed or not; '-' or none reads standard input")
        ->type_name("");
    app.add_option("--from-list", sources.listFile,
                   "Read more paths from a file ('-': standard input), one a line")
        ->check(inputName())
        ->type_name("FILE")
        ->group(group);
    app.add_flag("-0", sources.nulSeparated, "The list has a NUL behind each path")->group(group);
    app.add_flag("--single", sources.single,
                 "Read standard input and each file as one message, never as a\nmailbox")
        ->group(group);
}

void checkSources(const SourceOptions& sources) {
    if (sources.nulSeparated && !sources.listFile) {
        throw std::invalid_argument("-0 requires --from-list");
    }
    const auto uses = std::ranges::count(sources.paths, standardInput) +
                      (sources.listFile == standardInput ? 1 : 0);
    if (uses > 1) throw std::invalid_argument("standard input can be read only once");
}

void readStandardInputElse(SourceOptions& sources, std::ostream& err) {
    if (!sources.paths.empty() || sources.listFile) return;
    if (::isatty(STDIN_FILENO) != 0) err << "bouncecheck: reading a message from the terminal\n";
    sources.paths.emplace_back(standardInput);
}

void declareMaxMessageSize(CLI::App& app, std::size_t& size, const std::string& effect) {
    app.add_option_function<std::string>(
           "--max-message-size", checkedBy([&](std::string_view v) { size = parseSize(v); }),
           effect + "; k, m, g behind the number [64m]")
        ->type_name("SIZE")
        ->group(group);
}

void declareVerp(CLI::App& app, std::vector<VerpPattern>& patterns) {
    app.add_option_function<std::vector<std::string>>(
           "--verp",
           [&](const std::vector<std::string>& texts) {
               for (const std::string& text : texts) patterns.push_back(verpOf(text));
           },
           "The form of the addresses that your mail comes back to, such as\n"
           "bounces+{local}={domain}@lists.example.org or bounces-{tag}@example.org;\nrepeatable")
        ->type_name("PATTERN")
        ->expected(1)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->group(group);
}

void declareJobs(CLI::App& app, std::size_t& jobs) {
    app.add_option("-j", jobs, "Classify N messages at a time [all cores]")
        ->type_name("N")
        ->check(CLI::Range(1, 1024).description(""))
        ->group(group);
}

}  // namespace bouncecheck
