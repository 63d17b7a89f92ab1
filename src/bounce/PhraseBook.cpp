#include "bounce/PhraseBook.h"

namespace bouncecheck {
namespace {

constexpr auto phraseBookRows = [] {
    std::array<phrases::Row, book::numbering.count> used{};
    std::copy_n(book::numbering.rows.begin(), used.size(), used.begin());
    return used;
}();

constexpr phrases::Catalog catalog =
    phrases::CompiledCatalog<phraseBookRows>::catalog(book::rowsOf(BounceDataMarkers));

}  // namespace

const phrases::Catalog& phraseBook() noexcept { return catalog; }

std::span<const PhraseList> allPhraseLists() noexcept { return phraseLists; }

}  // namespace bouncecheck
