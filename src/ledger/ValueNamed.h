#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace bouncecheck::ledger {

/// The value with this name, where `names` has those of all values in their order; the first
/// where it is none of them.
template <class Value, std::size_t count>
constexpr Value valueNamed(const std::array<std::string_view, count>& names,
                           std::string_view name) noexcept {
    const auto* const found = std::find(names.data(), names.data() + count, name);
    const auto index = static_cast<std::size_t>(found - names.data());
    return static_cast<Value>(index == count ? 0 : index);
}

}  // namespace bouncecheck::ledger
