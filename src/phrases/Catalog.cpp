#include "phrases/Catalog.h"

#include <algorithm>

namespace bouncecheck::phrases {
namespace {

/// Receives what the matcher finds.
struct Collector {
    const Catalog& catalog;
    std::string_view text;
    std::span<std::size_t> places;
    RowSet found;

    bool wantsPlace(std::size_t row) const noexcept {
        return !places.empty() && catalog.placed.has(row);
    }

    /// Whether a phrase at that place is news.
    bool wants(std::size_t phrase, std::size_t at) const noexcept {
        for (std::size_t i = catalog.starts[phrase]; i < catalog.starts[phrase + 1]; ++i) {
            const std::size_t row = catalog.members[i];
            if (!found.has(row)) return true;
            if (wantsPlace(row) && at < places[row - catalog.placed.first]) return true;
        }
        return false;
    }

    void take(std::size_t row, std::size_t at) noexcept {
        if (wantsPlace(row)) {
            std::size_t& place = places[row - catalog.placed.first];
            place = this->found.has(row) ? std::min(place, at) : at;
        }
        this->found.add(row);
    }

    void onFound(std::size_t phrase, std::size_t at) noexcept {
        for (std::size_t i = catalog.starts[phrase]; i < catalog.starts[phrase + 1]; ++i) {
            const std::size_t row = catalog.members[i];
            const bool stands = catalog.kinds[row].letters == LetterCase::ignored ||
                                text.substr(at).starts_with(catalog.texts[row]);
            if (stands) take(row, at);
        }
    }
};

}  // namespace

RowSet Catalog::find(std::string_view text, std::span<std::size_t> places, Engine engine) const {
    Collector collector{*this, text, places, unsearchable};
    if (engine == Engine::pass) {
        matcher.scan(text, collector);
        return collector.found;
    }
    for (std::size_t row = 0; row < texts.size(); ++row) {
        if (unsearchable.has(row)) continue;
        if (kinds[row].isHint) {
            collector.found.add(row);
            continue;
        }
        const std::size_t at = findBytes(text, texts[row], 0, kinds[row].letters);
        if (at != npos) collector.take(row, at);
    }
    return collector.found;
}

bool Catalog::standsIn(std::string_view text, std::size_t row) const {
    return findBytes(text, texts[row], 0, kinds[row].letters) != npos;
}

}  // namespace bouncecheck::phrases
