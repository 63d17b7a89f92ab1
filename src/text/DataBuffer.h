#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace bouncecheck {

/// A growable array of bytes without a terminator of its own.
class DataBuffer {
public:
    DataBuffer() = default;
    explicit DataBuffer(std::string bytes) noexcept : bytes_(std::move(bytes)) {}

    /// The first byte. Valid until the buffer changes.
    const unsigned char* getData2() const noexcept {
        return reinterpret_cast<const unsigned char*>(bytes_.data());
    }
    unsigned getSize() const noexcept { return static_cast<unsigned>(bytes_.size()); }
    /// The bytes with their count. Valid until the buffer changes.
    std::string_view view() const noexcept { return bytes_; }

    void appendChar(unsigned char byte) { bytes_.push_back(static_cast<char>(byte)); }
    void append(std::string_view bytes) { bytes_.append(bytes); }

private:
    std::string bytes_;
};

}  // namespace bouncecheck
