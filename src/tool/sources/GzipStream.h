#pragma once

#include <zlib.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "tool/sources/InputStream.h"
#include "tool/sources/UnpackedSize.h"

namespace bouncecheck {

/// What a gzip file holds (RFC 1952), all its members one behind the other. Sizes and
/// checksums are checked. Of a damaged file it hands out all that could be unpacked, which
/// libarchive does not, and then throws ReadError. Bytes behind the last member are
/// ignored, as by gzip.
class GzipStream final : public InputStream {
public:
    /// `size` counts what is unpacked, and has to live as long.
    GzipStream(std::unique_ptr<InputStream> packed, UnpackedSize& size);
    ~GzipStream() override;

    std::size_t read(std::span<char> room) override;
    double fractionRead() const override { return packed_->fractionRead(); }
    std::uint64_t bytesRead() const override { return packed_->bytesRead(); }

private:
    bool fill();
    bool beginMember();

    std::unique_ptr<InputStream> packed_;
    UnpackedSize& size_;
    std::array<char, std::size_t{1} << 14> buffer_;
    z_stream zlib_ = {};
    bool atEnd_ = false;
};

}  // namespace bouncecheck
