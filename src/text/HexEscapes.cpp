#include "text/HexEscapes.h"

#include "text/Ascii.h"

namespace bouncecheck {

void appendHexDecoded(std::string& out, std::string_view text, char mark) {
    for (std::size_t at; (at = text.find(mark)) != std::string_view::npos;) {
        out += text.substr(0, at);
        text.remove_prefix(at);
        const int high = text.size() > 2 ? ascii::hexValue(text[1]) : -1;
        const int low = text.size() > 2 ? ascii::hexValue(text[2]) : -1;
        const bool isEscape = high >= 0 && low >= 0;
        out += isEscape ? static_cast<char>(high * 16 + low) : mark;
        text.remove_prefix(isEscape ? 3 : 1);
    }
    out += text;
}

}  // namespace bouncecheck
