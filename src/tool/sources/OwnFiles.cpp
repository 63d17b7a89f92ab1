#include "tool/sources/OwnFiles.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <span>

#include "tool/sources/InputStream.h"

namespace bouncecheck {
namespace {

std::vector<FileIdentity> identitiesOf(const std::vector<std::string>& paths) {
    std::vector<FileIdentity> files;
    for (const std::string& path : paths) {
        if (const auto file = identityOf(path)) files.push_back(*file);
    }
    return files;
}

bool isAmong(const std::vector<FileIdentity>& files, const FileIdentity& file) {
    return std::ranges::find(files, file) != files.end();
}

std::string beginningOf(InputStream& stream) {
    constexpr std::size_t enough = std::size_t{2} * PATH_MAX;
    std::string beginning(enough, '\0');
    std::size_t size = 0;
    while (const std::size_t count = stream.read(std::span(beginning).subspan(size))) {
        size += count;
    }
    beginning.resize(size);
    return beginning;
}

}  // namespace

OwnFiles::OwnFiles(const SourceOptions& options)
    : options_(options),
      excluded_(identitiesOf(options.excluded)),
      written_(identitiesOf(options.written)) {}

bool OwnFiles::isExcluded(const std::string& path) const {
    if (excluded_.empty()) return false;
    const auto file = identityOf(path);
    return file && isExcluded(*file);
}

bool OwnFiles::isExcluded(const FileIdentity& file) const { return isAmong(excluded_, file); }

bool OwnFiles::has(InputStream& stream, std::string_view path) const {
    const auto file = stream.identity();
    if (!file) return false;
    if (isExcluded(*file)) return true;
    if (!isAmong(written_, *file)) return false;
    if (options_.holdsOutput(beginningOf(stream))) return true;
    throw SourceIsOutput(std::string(path) + ": is read as mail, so no output is written to it");
}

}  // namespace bouncecheck
