#include "ArrowMessages.h"

#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <string>

namespace bouncecheck::python {
namespace {

template <class Offset>
std::string_view between(const void* const* buffers, std::int64_t at) noexcept {
    const auto* offsets = static_cast<const Offset*>(buffers[1]) + at;
    const auto size = static_cast<std::size_t>(offsets[1] - offsets[0]);
    if (size == 0) return {};
    return {static_cast<const char*>(buffers[2]) + offsets[0], size};
}

/// A view has 16 bytes: the size, then up to 12 bytes of text, or 4 of it and where all of it
/// stands: the number of a buffer, and the place in there.
std::string_view viewed(const void* const* buffers, std::int64_t at) noexcept {
    constexpr std::int32_t longestInside = 12;
    const char* view = static_cast<const char*>(buffers[1]) + at * 16;
    const auto number = [view](std::size_t place) {
        std::int32_t value = 0;
        std::memcpy(&value, view + place, sizeof value);
        return value;
    };
    const std::int32_t size = number(0);
    const char* text = size <= longestInside
                           ? view + 4
                           : static_cast<const char*>(buffers[2 + number(8)]) + number(12);
    return {text, static_cast<std::size_t>(size)};
}

}  // namespace

ArrowMessages::ArrowMessages(const ArrowSchema& schema, const ArrowArray& array)
    : array_(array), layout_(layoutOf(schema.format)) {
    if (schema.dictionary) throw std::invalid_argument("messages cannot be in a dictionary");
}

ArrowMessages::Layout ArrowMessages::layoutOf(std::string_view format) {
    if (format == "n") return Layout::null;
    if (format == "z" || format == "u") return Layout::offsets32;
    if (format == "Z" || format == "U") return Layout::offsets64;
    if (format == "vz" || format == "vu") return Layout::views;
    throw std::invalid_argument("messages cannot have the Arrow format " + std::string(format));
}

std::optional<std::string_view> ArrowMessages::at(std::int64_t row) const noexcept {
    if (layout_ == Layout::null) return std::nullopt;
    const std::int64_t at = array_.offset + row;
    const auto* validity = static_cast<const unsigned char*>(array_.buffers[0]);
    if (validity && (validity[at / 8] >> at % 8 & 1) == 0) return std::nullopt;
    switch (layout_) {
        case Layout::offsets32: return between<std::int32_t>(array_.buffers, at);
        case Layout::offsets64: return between<std::int64_t>(array_.buffers, at);
        default: return viewed(array_.buffers, at);
    }
}

}  // namespace bouncecheck::python
