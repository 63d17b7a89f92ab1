#include "mime/SingleByteCharset.h"

#include "mime/Limits.h"
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

}  // namespace bouncecheck
