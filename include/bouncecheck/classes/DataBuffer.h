#pragma once

#include <string>
#include <string_view>
#include <utility>

#include <bouncecheck/ByteStore.h>

namespace bouncecheck {

/// A growable array of bytes without a terminator of its own.
class DataBuffer {
public:
    DataBuffer() = default;
    explicit DataBuffer(std::string bytes) noexcept : bytes_(std::move(bytes)) {}
    explicit DataBuffer(ByteStore bytes) noexcept : bytes_(std::move(bytes)) {}

    /// The first byte. Valid until the buffer changes.
    const unsigned char* getData2() const noexcept {
        return reinterpret_cast<const unsigned char*>(view().data());
    }
    unsigned getSize() const noexcept { return static_cast<unsigned>(view().size()); }
    /// The bytes with their count. Valid until the buffer changes.
    std::string_view view() const noexcept { return bytes_.view(); }

    void appendChar(unsigned char byte) { bytes_.changing().push_back(static_cast<char>(byte)); }
    void append(std::string_view bytes) { bytes_.append(bytes); }
    /// The same; an empty buffer holds shared bytes together with `other`.
    void append(const DataBuffer& other) {
        if (view().empty() && other.bytes_.isShared()) {
            bytes_ = other.bytes_.stretch(other.view());
        } else {
            append(other.view());
        }
    }

    const ByteStore& bytes() const noexcept { return bytes_; }

private:
    ByteStore bytes_;
};

}  // namespace bouncecheck
