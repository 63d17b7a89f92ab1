#pragma once

#include <cstddef>
#include <cstdint>

#include "tool/sources/InputStream.h"

namespace bouncecheck {

/// Ends what unpacks to far more than any mail does: a file of a few kilobytes can
/// hold terabytes. One counts for a whole file, with all that is packed inside of it.
class UnpackedSize {
public:
    /// Counts `bytes` more, unpacked from `packed`. Throws ReadError when it is too much.
    void add(std::size_t bytes, const InputStream& packed) {
        size_ += bytes;
        if (size_ / mostTimes > packed.bytesRead() + allowance / mostTimes) {
            throw ReadError("unpacks to more than 2,000 times its size; the rest is skipped");
        }
    }

private:
    /// Twice what gzip can do at most, and far more than real mail does.
    static constexpr std::uint64_t mostTimes = 2000;
    static constexpr std::uint64_t allowance = std::uint64_t{64} << 20;

    std::uint64_t size_ = 0;
};

}  // namespace bouncecheck
