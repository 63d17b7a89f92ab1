#include <bouncecheck/BounceType.h>

#include <algorithm>

#include "bounce/tables/VerdictTypes.h"

namespace bouncecheck {

std::span<const VerdictType> allVerdictTypes() noexcept { return verdictTypes; }

const VerdictType* verdictTypeOf(int type) noexcept {
    const auto row = std::ranges::find(verdictTypes, type, &VerdictType::type);
    return row == std::end(verdictTypes) ? nullptr : &*row;
}

const char* bounceTypeName(int type) noexcept {
    const VerdictType* row = verdictTypeOf(type);
    return row ? row->name : "";
}

}  // namespace bouncecheck
