#include "tool/TypeFilter.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include <bouncecheck/BounceType.h>
#include "text/Ascii.h"

namespace bouncecheck {

TypeFilter::Types TypeFilter::parse(std::string_view types) {
    Types parsed;
    for (;;) {
        const std::size_t comma = types.find(',');
        const std::string_view wanted = ascii::trim(types.substr(0, comma));
        const auto known = std::ranges::find_if(allVerdictTypes(), [&](const VerdictType& help) {
            return wanted == bounceTypeName(help.type) || wanted == std::to_string(help.type);
        });
        if (known == allVerdictTypes().end()) {
            std::string problem = "no verdict is named \"" + std::string(wanted) + "\"; there are";
            for (const VerdictType& help : allVerdictTypes()) {
                problem.append(" ").append(bounceTypeName(help.type));
            }
            throw std::invalid_argument(problem);
        }
        parsed.set(static_cast<std::size_t>(known->type));
        if (comma == std::string_view::npos) return parsed;
        types.remove_prefix(comma + 1);
    }
}

}  // namespace bouncecheck
