#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tool/sources/FileIdentity.h"
#include "tool/sources/Sources.h"

namespace bouncecheck {

class InputStream;

/// What of the sources is the run's own, whatever name or link leads to it.
class OwnFiles {
public:
    /// `options` outlive it.
    explicit OwnFiles(const SourceOptions& options);

    /// Whether a file or folder is left out, wherever it is met.
    bool isExcluded(const std::string& path) const;
    bool isExcluded(const FileIdentity& file) const;
    /// Whether what was opened by the name `path` is no source: once it is open, it cannot become
    /// another file. A source is not read from; one that the run writes to throws SourceIsOutput.
    bool has(InputStream& stream, std::string_view path) const;

private:
    const SourceOptions& options_;
    std::vector<FileIdentity> excluded_;
    std::vector<FileIdentity> written_;
};

}  // namespace bouncecheck
