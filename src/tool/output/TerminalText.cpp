#include "tool/output/TerminalText.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <ostream>

#include <bouncecheck/BounceType.h>
#include "text/Controls.h"
#include "text/Utf8.h"
#include "tool/tables/CharacterWidths.h"

namespace bouncecheck {
namespace {

/// The length of the character that `text`, which is not empty, begins with.
std::size_t characterLength(std::string_view text) noexcept {
    std::size_t length = 1;
    while (length < text.size() && continuesCharacter(text[length])) ++length;
    return length;
}

std::size_t columnsOfCharacter(std::string_view character) noexcept {
    const std::uint32_t code = codePointOf(character);
    const auto range = std::ranges::lower_bound(characterWidths, code, {}, &CharacterRange::last);
    return range != std::end(characterWidths) && code >= range->first ? range->columns : 1;
}

}  // namespace

std::string printable(std::string_view text) {
    std::string wellFormed;
    appendWellFormed(wellFormed, text);
    return escapeControls(wellFormed);
}

void writePrintable(std::ostream& out, std::string_view text) {
    takeWellFormed(text, [&](std::string_view piece) { out << escapeControls(piece); });
}

std::size_t columns(std::string_view text) noexcept {
    std::size_t count = 0;
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        count += columnsOfCharacter(text.substr(0, length));
        text.remove_prefix(length);
    }
    return count;
}

std::size_t bytesWithin(std::string_view text, std::size_t width) noexcept {
    std::size_t size = 0;
    while (size < text.size()) {
        const std::size_t length = characterLength(text.substr(size));
        const std::size_t used = columnsOfCharacter(text.substr(size, length));
        if (used > width) break;
        width -= used;
        size += length;
    }
    return size;
}

std::string fitted(std::string_view text, std::size_t width, Cut cut) {
    constexpr std::string_view ellipsis = "\xE2\x80\xA6";
    if (bytesWithin(text, width) == text.size()) return std::string(text);
    if (width == 0) return {};
    if (cut == Cut::end) {
        return std::string(text.substr(0, bytesWithin(text, width - 1))).append(ellipsis);
    }
    for (std::size_t used = columns(text); used >= width;) {
        const std::size_t length = characterLength(text);
        used -= columnsOfCharacter(text.substr(0, length));
        text.remove_prefix(length);
    }
    return std::string(ellipsis).append(text);
}

std::string Style::paint(std::string_view text, std::string_view sgr) const {
    if (!color || sgr.empty()) return std::string(text);
    return std::string("\x1b[").append(sgr).append("m").append(text).append("\x1b[0m");
}

std::string_view colorOf(int type) noexcept {
    switch (type) {
        case BOUNCE_HARD:
        case BOUNCE_ABUSE:
        case BOUNCE_VIRUS: return "31";
        case BOUNCE_SOFT:
        case BOUNCE_TRANSIENT: return "33";
        case BOUNCE_BLOCKED: return "35";
        case BOUNCE_AUTO_REPLY:
        case BOUNCE_CHALLENGE:
        case BOUNCE_UNSUBSCRIBE: return "36";
        case BOUNCE_DISPOSITION: return "32";
        default: return "2";
    }
}

}  // namespace bouncecheck
