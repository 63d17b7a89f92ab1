#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "text/Ascii.h"

namespace bouncecheck {

/// Calls `take` for each name of a list with commas between, without the white space around it.
/// Where that returns false, throws std::invalid_argument, which says that no `what` has the name,
/// and lists the names of `rows`.
template <class Rows, class Take>
void forEachName(std::string_view list, std::string_view what, const Rows& rows, Take take) {
    for (;;) {
        const std::size_t comma = list.find(',');
        const std::string_view name = ascii::trim(list.substr(0, comma));
        if (!take(name)) {
            std::string problem = "no ";
            problem.append(what).append(" is named \"").append(name).append("\"; choose from:");
            for (std::string_view separator = " "; const auto& row : rows) {
                const std::string_view known = row.name;
                if (!known.empty()) problem.append(separator).append(known);
                if (!known.empty()) separator = ", ";
            }
            throw std::invalid_argument(problem);
        }
        if (comma == std::string_view::npos) return;
        list.remove_prefix(comma + 1);
    }
}

}  // namespace bouncecheck
