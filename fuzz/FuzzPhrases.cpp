// The phrase pass, with the tables of the classifier and with all its phrases as one
// table, compared with one plain search for each phrase. In the input a byte
// below 0x80 stands for itself, and a higher one begins three that stand for a
// phrase: two choose it, the third says how it is spoiled. An input that begins
// with 0xFF is searched as it is.

#include <algorithm>
#include <set>

#include "bench/PhrasePass.h"
#include "bench/support/Literals.h"
#include "bounce/PhraseBook.h"
#include "bounce/ScannedText.h"
#include "fuzz/Input.h"
#include "fuzz/Require.h"
#include "text/Ascii.h"

namespace bouncecheck::fuzz {
namespace {

using Indices = std::set<std::size_t>;

const std::vector<std::string>& literals() {
    static const std::vector<std::string> all = bench::tableLiterals();
    return all;
}

/// The phrase with letters in the other case, or without a byte at an end.
std::string spoiled(std::string phrase, std::size_t how) {
    if (how & 1) phrase.front() = ascii::toUpper(phrase.front());
    if (how & 2) {
        for (char& c : phrase) c = ascii::toLower(c) == c ? ascii::toUpper(c) : ascii::toLower(c);
    }
    if (how & 4) phrase.erase(0, 1);
    if (how & 8) phrase.erase(phrase.size() - std::min<std::size_t>(phrase.size(), 1));
    if (how & 16) phrase.insert(how % (phrase.size() + 1), 1, '\0');
    return phrase;
}

std::string composed(Input input) {
    constexpr std::size_t longest = 2000;  // the plain searches are slow
    if (input.rest().starts_with('\xFF')) return std::string(input.rest().substr(0, longest));
    std::string text;
    while (!input.rest().empty() && text.size() < longest) {
        const std::size_t byte = input.number(256);
        if (byte < 0x80) {
            text += static_cast<char>(byte);
        } else {
            const std::size_t chosen = (byte - 0x80) * 256 + input.number(256);
            text += spoiled(literals()[chosen % literals().size()], input.number(32));
        }
    }
    return text;
}

void requireLists(std::string_view text) {
    MarkerPlaces places;
    const ScannedText passed(TextOf::data, text, phrases::Engine::pass, &places);
    const ScannedText searched(TextOf::data, text, phrases::Engine::plain);
    for (const ListId list : allLists) {
        // Of a pattern, the pass only says that it may match.
        if (phraseLists[list.index()].kind == ListKind::patterns) continue;
        require(passed.firstOf(list).phrase == searched.firstOf(list).phrase,
                "the first phrase of a list is the first that a search finds");
    }
    for (std::size_t row = 0; row < std::size(singlePhrases); ++row) {
        require(passed.single(row) == searched.single(row), "a single phrase is found");
    }
    std::size_t found = passed.nextMarker(0);
    for (std::size_t i = searched.nextMarker(0); i != npos; i = searched.nextMarker(i + 1)) {
        require(found == i, "a marker is found when it is there");
        require(passed.markerPlace(i) == searched.markerPlace(i), "its place is the first");
        found = passed.nextMarker(i + 1);
    }
    require(found == npos, "no marker is found that is not there");
}

}  // namespace
}  // namespace bouncecheck::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace bouncecheck;
    using namespace bouncecheck::fuzz;
    static const PhrasePass pass(bench::viewsOf(literals()));
    const ExactBytes exact(composed(Input(data, size)));
    Indices found;
    pass.scan(exact.view(), [&](std::size_t index) {
        require(found.insert(index).second, "a phrase is found once");
    });
    Indices expected;
    for (std::size_t i = 0; i < literals().size(); ++i) {
        if (containsNoCase(exact.view(), literals()[i])) expected.insert(i);
    }
    require(found == expected, "one pass finds what plain searches find");
    requireLists(exact.view());
    return 0;
}
