#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>

#include "tool/sources/InputStream.h"

namespace bouncecheck::fuzz {

/// Bytes as a stream that hands out at most `step` at a time.
class StepStream final : public InputStream {
public:
    StepStream(std::string_view bytes, std::size_t step) : bytes_(bytes), step_(step) {}

    std::size_t read(std::span<char> room) override {
        const std::size_t count =
            bytes_.substr(read_).copy(room.data(), std::min(room.size(), step_));
        read_ += count;
        return count;
    }
    std::uint64_t bytesRead() const override { return read_; }

private:
    std::string_view bytes_;
    std::size_t step_;
    std::size_t read_ = 0;
};

}  // namespace bouncecheck::fuzz
