#include "reasons/Stage.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <iterator>

#include "phrases/CompiledMatcher.h"
#include "reasons/Words.h"
#include "reasons/tables/StageWords.h"

namespace bouncecheck {
namespace {

constexpr auto stageRows = [] {
    std::array<std::string_view, std::size(senderStages) + std::size(dataStages)> all{};
    const auto end = std::ranges::copy(senderStages, all.begin()).out;
    std::ranges::copy(dataStages, end);
    return all;
}();

using StagePhrases = phrases::CompiledMatcher<stageRows, std::identity{}>;

/// Receives the stages that a pass finds, and keeps the first in the order of the table.
struct FirstStage {
    std::size_t row = stageRows.size();

    bool wants(std::size_t other, std::size_t) const noexcept { return other < row; }
    void onFound(std::size_t other, std::size_t) noexcept { row = other; }
};

}  // namespace

Stage stageIn(std::string_view text) {
    FirstStage first;
    StagePhrases::matcher.scan(unfolded(text), first);
    if (first.row == stageRows.size()) return Stage::unknown;
    return first.row < std::size(senderStages) ? Stage::sender : Stage::data;
}

}  // namespace bouncecheck
