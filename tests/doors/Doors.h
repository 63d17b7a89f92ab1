#pragma once

#include <nlohmann/json.hpp>
#include <string_view>

namespace bouncecheck {

/// All that bouncecheck.h and bouncecheck_c.h tell of a message, with the keys of
/// docs/result.schema.json but `source` and `index`. C has the trace as a text.
nlohmann::json resultByCpp(std::string_view mail);
nlohmann::json resultByC(std::string_view mail);

}  // namespace bouncecheck
