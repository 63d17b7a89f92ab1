#include "tool/TypeFilter.h"

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
        bool isKnown = false;
        std::string names;
        for (const TypeHelp& help : typeHelp()) {
            const std::string_view name = bounceTypeName(help.type);
            names.append(" ").append(name);
            if (wanted != name && wanted != std::to_string(help.type)) continue;
            parsed.set(static_cast<std::size_t>(help.type));
            isKnown = true;
        }
        if (!isKnown) {
            throw std::invalid_argument("no verdict is named \"" + std::string(wanted) +
                                        "\"; there are" + names);
        }
        if (comma == std::string_view::npos) return parsed;
        types.remove_prefix(comma + 1);
    }
}

}  // namespace bouncecheck
