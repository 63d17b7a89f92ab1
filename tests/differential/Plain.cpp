// The questions of PhraseScan, each answered by a search of its own, and a classifier
// that remembers nothing. Linked in place of the pass and the memory, they make of the
// classifier the plain one that the fast one must agree with.

#include <cstddef>

#include "bounce/BounceCheck.h"
#include "bounce/Marker.h"
#include "bounce/PhraseScan.h"

namespace bouncecheck {

void PhraseScan::read(std::string_view text) {
    text_ = text;
    found_ = {};
    std::size_t row = 0;
    const auto take = [&](std::string_view literal, LetterCase letters) {
        if (findBytes(text, literal, 0, letters) != npos) {
            found_[row / 64] |= std::uint64_t{1} << (row % 64);
        }
        ++row;
    };
    for (const std::string_view literal : exactLiterals) take(literal, LetterCase::exact);
    for (const std::string_view literal : noCaseLiterals) take(literal, LetterCase::ignored);
}

const char* PhraseScan::firstOf(const char* const* list, LetterCase letters,
                                std::size_t maxEntries) const {
    for (std::size_t i = 0; i < maxEntries && list[i] && *list[i]; ++i) {
        if (findBytes(text_, list[i], 0, letters) != npos) return list[i];
    }
    return nullptr;
}

std::size_t PhraseScan::nextPattern(const char* const* list, std::size_t from) const noexcept {
    return list[from] && *list[from] ? from : npos;
}

bool PhraseScan::mayHaveRulePhrase(std::size_t) const noexcept { return true; }

std::size_t PhraseScan::nextMarker(std::size_t from) const noexcept {
    for (std::size_t i = from; *BounceDataMarkers[i]; ++i) {
        const Marker marker(BounceDataMarkers[i]);
        if (contains(text_, marker.context) && contains(text_, marker.text)) return i;
    }
    return npos;
}

std::size_t PhraseScan::markerPlace(std::size_t marker) const noexcept {
    return findBytes(text_, Marker(BounceDataMarkers[marker]).text);
}

BodyMemory* BounceCheck::memory() const { return nullptr; }

}  // namespace bouncecheck
