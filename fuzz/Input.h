#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

/// The entry point of every target: libFuzzer calls it with the input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace bouncecheck::fuzz {

/// Bytes on the heap with nothing behind them, so that the address sanitizer sees
/// whoever reads too far; behind those of a string a NUL may be read.
class ExactBytes {
public:
    explicit ExactBytes(std::string_view bytes)
        : bytes_(std::make_unique<char[]>(bytes.size())), size_(bytes.size()) {
        std::ranges::copy(bytes, bytes_.get());
    }
    std::string_view view() const noexcept { return {bytes_.get(), size_}; }

private:
    std::unique_ptr<char[]> bytes_;
    std::size_t size_;
};

/// The input, read from the front.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) noexcept
        : rest_(reinterpret_cast<const char*>(data), size) {}

    /// The next byte as a number below `limit`; 0 at the end.
    std::size_t number(std::size_t limit) noexcept {
        if (rest_.empty()) return 0;
        const auto byte = static_cast<unsigned char>(rest_.front());
        rest_.remove_prefix(1);
        return byte % limit;
    }
    /// What stands before the next line feed, which goes too.
    std::string_view line() noexcept {
        const std::string_view found = rest_.substr(0, rest_.find('\n'));
        rest_.remove_prefix(std::min(rest_.size(), found.size() + 1));
        return found;
    }
    std::string_view rest() const noexcept { return rest_; }

private:
    std::string_view rest_;
};

}  // namespace bouncecheck::fuzz
