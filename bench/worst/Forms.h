#pragma once

#include <iosfwd>
#include <memory>
#include <span>
#include <string_view>

#include "tool/output/Output.h"

namespace bouncecheck::bench {

/// A form of output with all that it can show.
struct Form {
    std::string_view name;
    std::unique_ptr<Output> (*make)(std::ostream& out);
};

std::span<const Form> forms() noexcept;

}  // namespace bouncecheck::bench
