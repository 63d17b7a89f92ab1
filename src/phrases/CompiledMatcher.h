#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <iterator>
#include <string_view>

#include "phrases/Matcher.h"
#include "phrases/PackedTexts.h"

namespace bouncecheck::phrases {

/// A matcher for the phrases of `Rows`, a constant array, with tables made by the compiler.
/// `TextOf` is what has the phrase of a row: a member, say. No two arrays may have the same name;
/// see CompiledCatalog.
template <const auto& Rows, auto TextOf>
class CompiledMatcher {
    static constexpr std::size_t count = std::size(Rows);
    static constexpr PackedTexts<count, packedSize(Rows, TextOf)> packed{Rows, TextOf};
    static constexpr Tables<count> tables{[] {
        std::array<std::string_view, count> all{};
        std::ranges::transform(Rows, all.begin(),
                               [](const auto& row) { return std::invoke(TextOf, row); });
        return all;
    }()};

public:
    static constexpr Texts texts = packed.all();
    static constexpr Matcher matcher{texts, tables};
};

}  // namespace bouncecheck::phrases
