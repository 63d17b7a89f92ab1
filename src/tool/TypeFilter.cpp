#include "tool/TypeFilter.h"

#include <algorithm>
#include <string>

#include <bouncecheck/BounceType.h>
#include "tool/NameList.h"

namespace bouncecheck {

TypeFilter::Types TypeFilter::parse(std::string_view types) {
    Types parsed;
    const auto all = allVerdictTypes();
    forEachName(types, "verdict", all, [&](std::string_view wanted) {
        const auto known = std::ranges::find_if(all, [&](const VerdictType& type) {
            return wanted == type.name || wanted == std::to_string(type.type);
        });
        if (known == all.end()) return false;
        parsed.set(static_cast<std::size_t>(known->type));
        return true;
    });
    return parsed;
}

bool TypeFilter::wantsNone() const noexcept {
    return std::ranges::none_of(allVerdictTypes(),
                                [this](const VerdictType& type) { return wants(type.type); });
}

}  // namespace bouncecheck
