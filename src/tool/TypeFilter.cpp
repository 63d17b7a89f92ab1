#include "tool/TypeFilter.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "bounce/BounceType.h"
#include "text/Ascii.h"
#include "tool/RuleHelp.h"

namespace bouncecheck {

TypeFilter::Types TypeFilter::parse(std::string_view types) {
    Types parsed;
    for (;;) {
        const std::size_t comma = types.find(',');
        const std::string_view wanted = ascii::trim(types.substr(0, comma));
        const auto known = std::ranges::find_if(typeHelp(), [&](const TypeHelp& help) {
            return wanted == bounceTypeName(help.type) || wanted == std::to_string(help.type);
        });
        if (known == typeHelp().end()) {
            std::string problem = "no verdict is named \"" + std::string(wanted) + "\"; there are";
            for (const TypeHelp& help : typeHelp()) {
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
