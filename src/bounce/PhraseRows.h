#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "bounce/Marker.h"
#include "bounce/PhraseScan.h"
#include "bounce/tables/AbuseIndicators.h"
#include "bounce/tables/AutoReplyIndicators.h"
#include "bounce/tables/AutoReplySubjectIndicators.h"
#include "bounce/tables/BounceFromAddrList.h"
#include "bounce/tables/BounceRules.h"
#include "bounce/tables/BounceSubjectList.h"
#include "bounce/tables/CannotDetermineRecipientStrings.h"
#include "bounce/tables/MailboxFullIndicators.h"
#include "bounce/tables/NetworkProblems.h"
#include "bounce/tables/ScanIndicators.h"
#include "bounce/tables/SenderBlockedIndicators.h"
#include "bounce/tables/SoftBounceAndVirusIndicators.h"
#include "bounce/tables/SpamFilterIndicators.h"
#include "bounce/tables/TransientIndicators.h"
#include "bounce/tables/UnsubscribeBodyIndicators.h"
#include "bounce/tables/UnsubscribeSubjectIndicators.h"
#include "text/PhraseMatcher.h"

/// All that a pass looks for, in one numbering: the rows of the tables, one after
/// the other. Many rows hold the same phrase, which is looked for once.
namespace bouncecheck::rows {

inline constexpr std::size_t capacity = PhraseScan::maxRows;

struct Row {
    std::string_view text;
    LetterCase letters = LetterCase::ignored;
};

struct Range {
    std::size_t first = 0;
    std::size_t end = 0;
};

struct List {
    const char* const* table = nullptr;
    LetterCase letters = LetterCase::ignored;
    Range rows;
};

/// The longest piece between the stars of a pattern.
constexpr std::string_view longestPiece(std::string_view pattern) noexcept {
    std::string_view longest;
    while (true) {
        const std::size_t star = pattern.find('*');
        const std::string_view piece = pattern.substr(0, star);
        if (piece.size() > longest.size()) longest = piece;
        if (star == npos) return longest;
        pattern.remove_prefix(star + 1);
    }
}

struct Book {
    std::array<Row, capacity> rows{};
    std::size_t count = 0;
    std::array<List, 20> lists{};
    std::size_t listCount = 0;
    Range literals;
    Range markers;
    Range contexts;
    Range rules;

    constexpr Book() {
        literals.first = count;
        for (const char* text : exactLiterals) add(text, LetterCase::exact);
        for (const char* text : noCaseLiterals) add(text, LetterCase::ignored);
        literals.end = markers.first = count;
        for (const char* entry : BounceDataMarkers) {
            if (*entry) add(Marker(entry).text, LetterCase::exact);
        }
        markers.end = contexts.first = count;
        for (const char* entry : BounceDataMarkers) {
            if (*entry) add(Marker(entry).context, LetterCase::exact);
        }
        contexts.end = count;

        addList(SenderBlockedIndicators);
        addList(MailboxFullIndicators);
        const Range both = addList(softBounceAndVirusPhrases);
        lists[listCount++] = {
            VirusIndicators, LetterCase::ignored, {both.first + softBouncePhraseCount, both.end}};
        addList(NetworkProblems);
        addList(TransientIndicators);
        addList(SpamFilterIndicators);
        addList(UnsubscribeBodyIndicators);
        addList(UnsubscribeSubjectIndicators);
        addList(ScanIndicators);
        addList(CannotDetermineRecipientStrings);
        addList(AbuseIndicators);
        addList(AutoReplyIndicators, LetterCase::exact);
        addList(AutoReplySubjectIndicators);
        addPatterns(BounceFromAddrList);
        addPatterns(BounceSubjectList);

        rules.first = count;
        for (const BounceRule& rule : BounceRules) {
            if (rule.source != RULE_END) add(rule.phrase, LetterCase::ignored);
        }
        rules.end = count;
    }

private:
    constexpr void add(std::string_view text, LetterCase letters) {
        rows[count++] = {text, letters};
    }
    constexpr Range addList(const char* const* table, LetterCase letters = LetterCase::ignored) {
        const std::size_t first = count;
        for (const char* const* entry = table; **entry; ++entry) add(*entry, letters);
        return remember(table, letters, first);
    }
    constexpr void addPatterns(const char* const* table) {
        const std::size_t first = count;
        for (const char* const* entry = table; **entry; ++entry) {
            add(longestPiece(*entry), LetterCase::ignored);
        }
        remember(table, LetterCase::ignored, first);
    }
    constexpr Range remember(const char* const* table, LetterCase letters, std::size_t first) {
        lists[listCount++] = {table, letters, {first, count}};
        return {first, count};
    }
};

inline constexpr Book book;

constexpr bool isSearchable(const Row& row) noexcept {
    return row.text.size() >= phrases::shortest;
}

/// The phrases of the rows, each once, and the rows of each.
struct Grouping {
    std::array<std::string_view, capacity> texts{};
    std::size_t count = 0;
    /// Where the rows of a phrase begin in `members`.
    std::array<std::uint16_t, capacity + 1> starts{};
    std::array<std::uint16_t, capacity> members{};

    constexpr Grouping() {
        constexpr std::size_t chains = 1024;
        std::array<std::uint16_t, capacity> groupOf{};
        std::array<std::uint16_t, chains> head{};    // 1 more than the group, 0 for none
        std::array<std::uint16_t, capacity> next{};  // likewise
        for (std::size_t row = 0; row < book.count; ++row) {
            if (!isSearchable(book.rows[row])) continue;
            const std::string_view text = book.rows[row].text;
            std::uint32_t hash = 0;
            for (const char c : text) hash = hash * 31 + phrases::folded(c);
            std::size_t group = head[hash % chains];
            while (group != 0 && !ascii::equalsNoCase(texts[group - 1], text)) {
                group = next[group - 1];
            }
            if (group == 0) {
                texts[count] = text;
                next[count] = head[hash % chains];
                head[hash % chains] = static_cast<std::uint16_t>(++count);
                group = count;
            }
            groupOf[row] = static_cast<std::uint16_t>(group - 1);
            ++starts[group];
        }
        for (std::size_t i = 1; i < starts.size(); ++i) {
            starts[i] = static_cast<std::uint16_t>(starts[i] + starts[i - 1]);
        }
        std::array<std::uint16_t, capacity + 1> ends = starts;
        for (std::size_t row = 0; row < book.count; ++row) {
            if (!isSearchable(book.rows[row])) continue;
            members[ends[groupOf[row]]++] = static_cast<std::uint16_t>(row);
        }
    }

    template <std::size_t Count>
    constexpr std::array<std::string_view, Count> phrases() const {
        std::array<std::string_view, Count> out{};
        for (std::size_t i = 0; i < Count; ++i) out[i] = texts[i];
        return out;
    }
};

}  // namespace bouncecheck::rows
