#include "bounce/ScannedText.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "bounce/Marker.h"
#include "text/Wildcard.h"

namespace bouncecheck {
namespace {

using phrases::Engine;

/// The pass finds in `text` what one search for each phrase finds.
void expectAsSearched(std::string_view text) {
    MarkerPlaces places;
    const ScannedText passed(TextOf::data, text, Engine::pass, &places);
    const ScannedText searched(TextOf::data, text, Engine::plain);
    for (const ListId list : allLists) {
        const PhraseList& phraseList = phraseLists[list.index()];
        if (phraseList.kind != ListKind::patterns) {
            ASSERT_EQ(passed.firstOf(list).phrase, searched.firstOf(list).phrase)
                << phraseList.name;
            continue;
        }
        for (std::size_t i = 0; i < phraseList.rows.size(); ++i) {
            if (!wildcardMatch(text, phraseList.rows[i], LetterCase::ignored)) continue;
            ASSERT_EQ(passed.nextPattern(list, i), i) << phraseList.rows[i];
        }
    }
    for (std::size_t row = 0; row < std::size(singlePhrases); ++row) {
        ASSERT_EQ(passed.single(row), searched.single(row)) << singlePhrases[row].phrase;
    }
    std::vector<std::size_t> markers;
    for (std::size_t i = 0; (i = searched.nextMarker(i)) != npos; ++i) {
        markers.push_back(i);
        ASSERT_EQ(passed.markerPlace(i), searched.markerPlace(i)) << BounceDataMarkers[i];
    }
    std::vector<std::size_t> found;
    for (std::size_t i = 0; (i = passed.nextMarker(i)) != npos; ++i) found.push_back(i);
    ASSERT_EQ(found, markers);
}

TEST(ScannedText, AgreesWithASearchForEachPhrase) {
    std::vector<std::string> phrases = {"antispam", "captcha.jsp", "PostMaster"};
    for (const PhraseList& list : phraseLists) {
        phrases.insert(phrases.end(), list.rows.begin(), list.rows.end());
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

TEST(ScannedText, TakesByteForFoldedByteOnlyWhereItIsALetter) {
    // '{' and '[' fold to the same byte, as do CR and '-'.
    expectAsSearched("{MENSAGEM AUTOMATICA] [mensagem automatica]");
    expectAsSearched("\r\r\r The following addresses had permanent fatal errors -----");
    expectAsSearched(std::string(300, '-') + "To:-a@x.example");
}

TEST(ScannedText, FindsAPhraseInLetterCaseWhereTheListCounts) {
    const auto found = [](std::string_view text, ListId list) {
        return std::string(ScannedText(TextOf::data, text, Engine::pass).firstOf(list).phrase);
    };
    EXPECT_EQ(found("Quota Exceeded", MailboxFullIndicators), "uota exceeded");
    EXPECT_EQ(found("out of the office", AutoReplyIndicators), "out of the office");
    EXPECT_EQ(found("OUT OF THE OFFICE", AutoReplyIndicators), "");
}

TEST(ScannedText, NamesTheRowOfTheListThatASearchRanOnInto) {
    const ScannedText text(TextOf::subject, "we saw w32/netsky today", Engine::pass);
    const Match match = text.firstOf(SoftBounceIndicators);
    EXPECT_EQ(match.table, "VirusIndicators");
    EXPECT_EQ(match, text.firstOf(VirusIndicators));
    EXPECT_EQ(match.text, TextOf::subject);
    EXPECT_STREQ(phraseLists[ListId(VirusIndicators).index()].rows[match.row], match.phrase);
}

}  // namespace
}  // namespace bouncecheck
