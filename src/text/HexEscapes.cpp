#include "text/HexEscapes.h"

#include "text/Ascii.h"

namespace bouncecheck {

std::string decodeHexEscapes(std::string_view text, char mark) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text[i] == mark && i + 2 < text.size();
        const int high = isEscape ? ascii::hexValue(text[i + 1]) : -1;
        const int low = isEscape ? ascii::hexValue(text[i + 2]) : -1;
        if (high < 0 || low < 0) {
            out += text[i];
        } else {
            out += static_cast<char>(high * 16 + low);
            i += 2;
        }
    }
    return out;
}

}  // namespace bouncecheck
