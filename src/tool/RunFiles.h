#pragma once

#include <iosfwd>
#include <optional>

#include "tool/Options.h"
#include "tool/OutputFile.h"

namespace bouncecheck {

/// The files that a run writes. They appear when it succeeds, and no part of them is read
/// as mail meanwhile.
class RunFiles {
public:
    /// Opens what the options name, and makes their sources skip it. A signal that comes
    /// while they are written removes them. Throws std::runtime_error.
    explicit RunFiles(Options& options);

    /// What is printed to: `out`, unless a file is named.
    std::ostream& out(std::ostream& out) noexcept { return file_ ? file_->stream() : out; }
    /// The page, or null.
    std::ostream* page() noexcept { return page_ ? &page_->stream() : nullptr; }
    /// Makes the files appear. Throws std::runtime_error.
    void commit();

private:
    std::optional<OutputFile> file_;
    std::optional<OutputFile> page_;
};

}  // namespace bouncecheck
