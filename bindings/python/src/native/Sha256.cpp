#include "Sha256.h"

#include <algorithm>
#include <bit>

namespace bouncecheck::python {
namespace {

constexpr std::array<std::uint32_t, 64> roundConstants = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

template <class Number>
void putBigEndian(unsigned char* to, Number number) noexcept {
    for (std::size_t i = sizeof number; i-- > 0; number >>= 8) {
        to[i] = static_cast<unsigned char>(number & 0xFF);
    }
}

std::uint32_t bigEndian(const unsigned char* bytes) noexcept {
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 |
           std::uint32_t{bytes[2]} << 8 | bytes[3];
}

}  // namespace

void Sha256::addBlock(const unsigned char* block) noexcept {
    std::array<std::uint32_t, 64> words;
    for (std::size_t i = 0; i < 16; ++i) words[i] = bigEndian(block + 4 * i);
    for (std::size_t i = 16; i < 64; ++i) {
        const std::uint32_t a = words[i - 15], b = words[i - 2];
        words[i] = words[i - 16] + (std::rotr(a, 7) ^ std::rotr(a, 18) ^ a >> 3) + words[i - 7] +
                   (std::rotr(b, 17) ^ std::rotr(b, 19) ^ b >> 10);
    }
    auto [a, b, c, d, e, f, g, h] = state_;
    for (std::size_t i = 0; i < 64; ++i) {
        const std::uint32_t first = h + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) +
                                    ((e & f) ^ (~e & g)) + roundConstants[i] + words[i];
        const std::uint32_t second =
            (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
        h = g, g = f, f = e, e = d + first, d = c, c = b, b = a, a = first + second;
    }
    const std::array<std::uint32_t, 8> more = {a, b, c, d, e, f, g, h};
    for (std::size_t i = 0; i < more.size(); ++i) state_[i] += more[i];
}

void Sha256::add(std::string_view text) {
    while (!text.empty()) {
        const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
        const std::size_t filled = size_ % blockSize;
        const std::size_t taken = std::min(text.size(), blockSize - filled);
        if (taken == blockSize) {
            addBlock(bytes);
        } else {
            std::copy_n(bytes, taken, rest_.data() + filled);
            if (filled + taken == blockSize) addBlock(rest_.data());
        }
        size_ += taken;
        text.remove_prefix(taken);
    }
}

Sha256::Digest Sha256::result() {
    // A bit, and zeros up to the number of bits in the last 8 bytes of a block.
    constexpr std::size_t lengthAt = blockSize - 8;
    std::array<unsigned char, blockSize + 8> end = {0x80};
    const std::size_t filled = size_ % blockSize;
    const std::size_t padding = (filled < lengthAt ? lengthAt : blockSize + lengthAt) - filled;
    std::array<unsigned char, 8> bits;
    putBigEndian(bits.data(), size_ * 8);
    add({reinterpret_cast<const char*>(end.data()), padding});
    add({reinterpret_cast<const char*>(bits.data()), bits.size()});
    Digest digest;
    for (std::size_t i = 0; i < state_.size(); ++i) putBigEndian(digest.data() + 4 * i, state_[i]);
    return digest;
}

}  // namespace bouncecheck::python
