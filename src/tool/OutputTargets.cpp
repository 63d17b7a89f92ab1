#include "tool/OutputTargets.h"

#include <sys/stat.h>

#include <algorithm>
#include <optional>
#include <stdexcept>

#include "files/Paths.h"
#include "tool/sources/FileIdentity.h"

namespace bouncecheck {
namespace {

const std::string standardInput = "/dev/stdin";
const std::string standardOutput = "/dev/stdout";

/// A file that is there, or one that is not yet, by its folder and its name.
struct Target {
    FileIdentity file;
    std::string name;

    bool operator==(const Target&) const = default;
};

/// Nothing for what may be written to twice, such as a terminal, and for what is in no
/// folder.
std::optional<Target> targetOf(const std::string& path) {
    struct stat status;
    if (::stat(path.c_str(), &status) == 0) {
        if (S_ISCHR(status.st_mode)) return std::nullopt;
        return Target{identityIn(status), ""};
    }
    const std::string target = withoutLinks(path);
    const std::size_t name = target.find_last_of('/') + 1;
    const auto folder = identityOf(name == 0 ? "." : target.substr(0, name));
    if (!folder) return std::nullopt;
    return Target{*folder, target.substr(name)};
}

/// All that the command line names to be read.
std::vector<std::string> namedSources(const Options& options) {
    std::vector<std::string> named = options.sources.paths;
    if (options.sources.listFile) named.push_back(*options.sources.listFile);
    if (named.empty() && options.view != View::phrases) named.emplace_back("-");
    std::ranges::replace(named, std::string("-"), standardInput);
    return named;
}

bool isAmong(const std::vector<std::string>& named, const std::string& target, mode_t kind) {
    struct stat written;
    if (::stat(target.c_str(), &written) != 0 || (written.st_mode & S_IFMT) != kind) return false;
    return std::ranges::any_of(
        named, [&](const std::string& path) { return identityOf(path) == identityIn(written); });
}

}  // namespace

std::vector<std::string> outputTargets(const Options& options) {
    std::vector<std::string> targets = {options.outFile.value_or(standardOutput)};
    if (options.pageFile) targets.push_back(*options.pageFile);
    return targets;
}

void checkOutputTargets(const Options& options) {
    const std::vector<std::string> targets = outputTargets(options);
    // A page on standard output stands beside what is printed.
    const bool isPrintedToo =
        options.pageFile && !options.outFile && descriptorIn(*options.pageFile) >= 0;
    if (targets.size() == 2 && !isPrintedToo) {
        const auto target = targetOf(targets[0]);
        if (targets[0] == targets[1] || (target && target == targetOf(targets[1]))) {
            throw std::invalid_argument("--html and other output take a file each");
        }
    }
    const std::vector<std::string> sources = namedSources(options);
    for (const std::string& target : targets) {
        if (!isAmong(sources, target, S_IFREG)) continue;
        const std::string name = target == standardOutput ? "standard output" : target;
        throw std::invalid_argument("output to " + name + " would replace what is read");
    }
    if (options.sortInto && isAmong(sources, *options.sortInto, S_IFDIR)) {
        throw std::invalid_argument(*options.sortInto + ": is read, so nothing is sorted into it");
    }
}

}  // namespace bouncecheck
