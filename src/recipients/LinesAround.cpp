#include "recipients/LinesAround.h"

#include <algorithm>
#include <cstddef>

#include "recipients/NamedRecipients.h"
#include "text/Ascii.h"
#include "text/Search.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

/// Where the first whole line of `text` behind the byte `from` begins, or else, as it has none in
/// front of `most`, the first whole character.
std::size_t firstWhole(std::string_view text, std::size_t from, std::size_t most) noexcept {
    if (from == 0) return 0;
    const std::size_t lineEnd = text.substr(0, most).find('\n', from - 1);
    if (lineEnd != npos) return lineEnd + 1;
    while (from < most && continuesCharacter(text[from])) ++from;
    return from;
}

}  // namespace

std::string linesAround(std::string_view text, TextPart words) {
    const std::size_t begin = firstWhole(text, words.at - std::min(words.at, mostSaid), words.at);
    const std::size_t wordsEnd = words.at + words.length;
    text = wholeCharacters(text, wordsEnd + mostSaid);
    std::string lines;
    for (std::size_t at = begin; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        const std::string_view line = ascii::trim(text.substr(at, end - at));
        if (!line.empty()) {
            lines.append(line) += '\n';
        } else if (end < words.at) {
            lines.clear();
        } else {
            break;
        }
        at = end + 1;
    }
    return lines;
}

}  // namespace bouncecheck
