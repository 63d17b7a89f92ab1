#include "mime/SingleByteCharset.h"

#include <algorithm>

#include <bouncecheck/Limits.h>
#include "text/Ascii.h"
#include "text/Utf8.h"

namespace bouncecheck {

std::string decodeSingleBytes(std::string_view bytes, const UpperHalf& upper) {
    const auto meant = [&](char c) { return upper[static_cast<unsigned char>(c) & 0x7Fu]; };
    std::size_t growth = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (ascii::isAscii(bytes[i])) continue;
        const std::size_t more = meant(bytes[i]) < 0x800 ? 1 : 2;
        if (growth + more > limits::charsetGrowth) {
            bytes = bytes.substr(0, i);
            break;
        }
        growth += more;
    }
    std::string out;
    out.reserve(bytes.size() + growth);
    while (!bytes.empty()) {
        const std::size_t plain = asciiPrefix(bytes);
        out.append(bytes.substr(0, plain));
        bytes.remove_prefix(plain);
        for (; !bytes.empty() && !ascii::isAscii(bytes.front()); bytes.remove_prefix(1)) {
            appendUtf8(out, meant(bytes.front()));
        }
    }
    return out;
}

std::string decodeSingleBytes(std::string_view bytes, const ByteMeanings& meanings) {
    const std::size_t most = bytes.size() + limits::charsetGrowth;
    constexpr std::size_t longest = 3;  // of UTF-8, below U+10000
    std::string out;
    out.reserve(std::min(longest * bytes.size(), most));
    for (const char byte : bytes) {
        if (out.size() + longest > most) break;
        appendUtf8(out, meanings[static_cast<unsigned char>(byte)]);
    }
    return out;
}

}  // namespace bouncecheck
