#include "text/Wildcard.h"

namespace bouncecheck {

bool wildcardMatch(std::string_view text, std::string_view pattern, LetterCase letters) {
    const std::size_t firstStar = pattern.find('*');
    if (firstStar == npos) {
        return text.size() == pattern.size() && startsWith(text, pattern, letters);
    }
    // The pieces before the first and after the last star are fixed to the
    // ends; each piece between two stars may take its first place that is left,
    // since a later place never helps those that follow.
    const std::string_view head = pattern.substr(0, firstStar);
    const std::string_view tail = pattern.substr(pattern.rfind('*') + 1);
    if (text.size() < head.size() + tail.size()) return false;
    if (!startsWith(text, head, letters)) return false;
    if (!startsWith(text.substr(text.size() - tail.size()), tail, letters)) return false;

    std::string_view left = text.substr(head.size(), text.size() - head.size() - tail.size());
    std::string_view pieces = pattern.substr(firstStar, pattern.size() - firstStar - tail.size());
    while (!pieces.empty()) {
        pieces.remove_prefix(1);  // its star
        const std::string_view piece = pieces.substr(0, pieces.find('*'));
        const std::size_t at = findBytes(left, piece, 0, letters);
        if (at == npos) return false;
        left.remove_prefix(at + piece.size());
        pieces.remove_prefix(piece.size());
    }
    return true;
}

}  // namespace bouncecheck
