// The phrase pass, with the tables of the classifier and with all its phrases as one
// table, against one plain search for each phrase. In the input a byte
// below 0x80 stands for itself, and a higher one begins three that stand for a
// phrase: two choose it, the third says how it is spoiled. An input that begins
// with 0xFF is searched as it is.

#include <algorithm>
#include <set>

#include "bench/PhrasePass.h"
#include "bench/support/Literals.h"
#include "bounce/Marker.h"
#include "bounce/PhraseScan.h"
#include "bounce/PhraseTables.h"
#include "bounce/tables/AutoReplyIndicators.h"
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
    const PhraseScan scan(text);
    for (const PhraseTable& table : phraseTables()) {
        // Patterns and markers are taken apart by the pass.
        const std::string_view name = table.name;
        if (name == "BounceSubjectList" || name == "BounceFromAddrList" ||
            name == "BounceDataMarkers") {
            continue;
        }
        const char* const* list = table.phrases.data();
        const LetterCase letters =
            list == AutoReplyIndicators ? LetterCase::exact : LetterCase::ignored;
        // To the terminator: one table runs on into the next.
        const char* const* found = list;
        while (*found && **found && findBytes(text, *found, 0, letters) == npos) ++found;
        const bool isThere = *found && **found;
        require(scan.firstOf(list, letters) == (isThere ? *found : nullptr),
                "the first phrase of a list is the first that a search finds");
    }
    for (std::size_t i = 0, next = scan.nextMarker(0); *BounceDataMarkers[i]; ++i) {
        const Marker marker(BounceDataMarkers[i]);
        const bool isThere = contains(text, marker.context) && contains(text, marker.text);
        require(isThere == (next == i), "a marker is told when it is there");
        if (!isThere) continue;
        require(scan.markerPlace(i) == findBytes(text, marker.text), "its place is the first");
        next = scan.nextMarker(i + 1);
    }
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
        require(found.insert(index).second, "a phrase is told once");
    });
    Indices expected;
    for (std::size_t i = 0; i < literals().size(); ++i) {
        if (containsNoCase(exact.view(), literals()[i])) expected.insert(i);
    }
    require(found == expected, "one pass finds what plain searches find");
    requireLists(exact.view());
    return 0;
}
