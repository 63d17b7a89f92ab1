#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>

#include "tool/sources/FileContent.h"
#include "tool/sources/InputStream.h"

namespace bouncecheck {

/// A stream whose first bytes may be looked at before they are read.
class PeekedStream final : public InputStream {
public:
    /// Reads the first bytes. What the stream throws then comes out of the first read
    /// behind them.
    explicit PeekedStream(std::unique_ptr<InputStream> stream);

    /// What the first bytes show it to be.
    const FileContent& content() const noexcept { return content_; }

    std::size_t read(std::span<char> room) override;
    std::optional<std::uint64_t> sizeLeft() const override;
    double fractionRead() const override { return stream_->fractionRead(); }
    std::uint64_t bytesRead() const override { return stream_->bytesRead(); }

private:
    std::unique_ptr<InputStream> stream_;
    /// More than decide: most messages are read at once.
    std::array<char, 8192> first_;
    std::size_t size_ = 0;
    std::size_t read_ = 0;
    /// Whether the first bytes are all; a terminal is not asked twice.
    bool atEnd_ = false;
    std::optional<ReadError> damage_;
    FileContent content_;
};

}  // namespace bouncecheck
