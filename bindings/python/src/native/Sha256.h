#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ledger/MessageIdentity.h"

namespace bouncecheck::python {

/// SHA-256 (FIPS 180-4), so that the package needs no library for it.
class Sha256 final : public ledger::HashInput {
public:
    using Digest = std::array<unsigned char, 32>;

    void add(std::string_view text) override;
    /// The hash of all that was added; nothing can be added after.
    Digest result();

private:
    static constexpr std::size_t blockSize = 64;

    void addBlock(const unsigned char* block) noexcept;

    std::array<std::uint32_t, 8> state_ = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                           0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    std::array<unsigned char, blockSize> rest_{};
    std::uint64_t size_ = 0;
};

}  // namespace bouncecheck::python
