#include "bounce/PhraseScan.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "bounce/Marker.h"
#include "bounce/PhraseTables.h"
#include "bounce/TextScan.h"
#include "bounce/tables/AutoReplyIndicators.h"
#include "bounce/tables/BounceSubjectList.h"
#include "text/Wildcard.h"

namespace bouncecheck {
namespace {

/// What the pass says of a text, against one search for each phrase.
void expectAsSearched(std::string_view text) {
    const PhraseScan scan(text);
    for (const PhraseTable& table : phraseTables()) {
        const char* const* list = table.phrases.data();
        const LetterCase letters =
            list == AutoReplyIndicators ? LetterCase::exact : LetterCase::ignored;
        const char* first = nullptr;
        for (std::size_t i = 0; !first && list[i] && *list[i]; ++i) {
            if (findBytes(text, list[i], 0, letters) != npos) first = list[i];
        }
        const std::string_view name = table.name;
        // Patterns and markers are taken apart by the pass.
        if (name == "BounceSubjectList" || name == "BounceFromAddrList" ||
            name == "BounceDataMarkers") {
            continue;
        }
        ASSERT_EQ(scan.firstOf(list, letters), first) << table.name;
    }

    std::vector<std::size_t> markers;
    for (std::size_t i = 0; *BounceDataMarkers[i]; ++i) {
        const Marker marker(BounceDataMarkers[i]);
        if (contains(text, marker.context) && contains(text, marker.text)) markers.push_back(i);
    }
    std::vector<std::size_t> told;
    for (std::size_t i = 0; (i = scan.nextMarker(i)) != npos; ++i) {
        told.push_back(i);
        ASSERT_EQ(scan.markerPlace(i), findBytes(text, Marker(BounceDataMarkers[i]).text))
            << BounceDataMarkers[i];
    }
    ASSERT_EQ(told, markers);

    for (std::size_t i = 0, next = 0; *BounceSubjectList[i]; ++i) {
        if (next < i || i == 0) next = scan.nextPattern(BounceSubjectList, i);
        if (wildcardMatch(text, BounceSubjectList[i], LetterCase::ignored)) {
            ASSERT_EQ(next, i) << BounceSubjectList[i];
        }
    }
    ASSERT_EQ(scan.has("antispam"), contains(text, "antispam"));
    ASSERT_EQ(scan.has("captcha.jsp"), contains(text, "captcha.jsp"));
    ASSERT_EQ(scan.hasNoCase("postmaster"), containsNoCase(text, "postmaster"));
}

TEST(PhraseScan, AgreesWithASearchForEachPhrase) {
    std::vector<std::string> phrases = {"antispam", "captcha.jsp", "PostMaster"};
    for (const PhraseTable& table : phraseTables()) {
        phrases.insert(phrases.end(), table.phrases.begin(), table.phrases.end());
    }
    std::mt19937 random(20);
    const auto below = [&](std::size_t limit) { return random() % limit; };
    for (int round = 0; round < 1500; ++round) {
        std::string text;
        for (std::size_t pieces = below(6); pieces > 0; --pieces) {
            std::string piece = phrases[below(phrases.size())];
            if (below(4) == 0) piece.erase(below(piece.size()), 1);
            if (below(4) == 0) piece.resize(below(piece.size() + 1));
            if (below(4) == 0) piece.insert(below(piece.size() + 1), phrases[below(20)]);
            if (below(3) == 0) {
                for (char& c : piece) c = below(2) == 0 ? ascii::toUpper(c) : ascii::toLower(c);
            }
            if (piece.starts_with('[') && below(2) == 0) {
                const Marker marker(piece);
                piece = std::string(marker.context) + " " + std::string(marker.text);
            }
            text.append(below(5), ' ').append(piece);
        }
        SCOPED_TRACE(text);
        expectAsSearched(text);
        if (HasFatalFailure()) return;
    }
}

TEST(PhraseScan, TakesByteForFoldedByteOnlyWhereItIsALetter) {
    // '{' and '[' fold to the same byte, as do CR and '-'.
    expectAsSearched("{MENSAGEM AUTOMATICA] [mensagem automatica]");
    expectAsSearched("\r\r\r The following addresses had permanent fatal errors -----");
    expectAsSearched(std::string(300, '-') + "To:-a@x.example");
}

TEST(PhraseScan, SearchesListsThatAreNotTheProgramsOwn) {
    const char* const list[] = {"zebra", "GNU", ""};
    EXPECT_STREQ(PhraseScan("a gnu, a Zebra").firstOf(list, LetterCase::ignored), "zebra");
    EXPECT_STREQ(PhraseScan("a GNU, a Zebra").firstOf(list, LetterCase::exact), "GNU");
    EXPECT_EQ(PhraseScan("a gnu").firstOf(list, LetterCase::ignored, 1), nullptr);
    // The program's own lists, but cut short or in another letter case.
    EXPECT_EQ(PhraseScan("Autoreply").firstOf(AutoReplyIndicators, LetterCase::exact, 3), nullptr);
    EXPECT_STREQ(PhraseScan("OUT OF THE OFFICE").firstOf(AutoReplyIndicators, LetterCase::ignored),
                 "out of the office");
}

TEST(TextScan, IsMadeAgainWhenTheTextHasChanged) {
    StringBuffer text;
    TextScan scan(text);
    EXPECT_FALSE(scan.phrases().has("antispam"));
    text.setString("antispam");
    EXPECT_TRUE(scan.phrases().has("antispam"));
    text.removeCharOccurances('i');
    EXPECT_FALSE(scan.phrases().has("antispam"));
    StringBuffer other;
    other.setString("antispam");
    text = std::move(other);
    EXPECT_TRUE(scan.phrases().has("antispam"));
    const StringBuffer taken(std::move(text));
    EXPECT_FALSE(scan.phrases().has("antispam"));
}

}  // namespace
}  // namespace bouncecheck
