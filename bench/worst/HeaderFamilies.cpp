#include <array>
#include <iterator>

#include <bouncecheck/PhraseList.h>
#include "bench/worst/Families.h"
#include "bench/worst/MessageWriter.h"
#include "mime/tables/Charsets.h"

namespace bouncecheck::bench {
namespace {

constexpr std::string_view from = "From: a@b.example\n";

/// A header whose last field `start` goes on with `piece`; then a short text.
std::string longField(std::size_t bytes, std::string_view start, std::string_view piece) {
    return MessageWriter(bytes).add(start).fill(piece).add("\n\nhello\n").take();
}

/// Header lines until the size is reached, then a short text.
std::string manyFields(std::size_t bytes, std::string_view line) {
    return longField(bytes, undeliverable, line);
}

/// The subject made of the phrases of a table, '*' included.
std::string subjectOfTable(std::size_t bytes, std::string_view table) {
    MessageWriter writer(bytes);
    writer.add(from).add("Subject: ");
    for (const PhraseList& candidate : allPhraseLists()) {
        if (candidate.name != table) continue;
        std::size_t next = 0;
        writer.fillFrom([&] { return candidate.rows[next++ % candidate.rows.size()]; });
    }
    return writer.add("\n\nhello\n").take();
}

std::string continuations(std::size_t bytes) {
    MessageWriter writer(bytes);
    writer.add(undeliverable).add("Content-Type: multipart/mixed");
    std::size_t number = 0;
    writer.fillFrom([&] { return ";\n boundary*" + std::to_string(number++) + "*=%62"; });
    return writer.add("\n\n--b\n\nhello\n").take();
}

template <std::size_t Count>
std::string alternatingWords(std::size_t bytes, const std::array<std::string_view, Count>& words) {
    std::size_t next = 0;
    return MessageWriter(bytes)
        .add(from)
        .add("Subject: ")
        .fillFrom([&] { return words[next++ % words.size()]; })
        .add("\n\nhello\n")
        .take();
}

constexpr std::array<std::string_view, 4> usualWords = {
    "=?iso-8859-1?Q?=E9?= ", "=?utf-8?B?w6k=?= ", "=?iso-2022-jp?B?GyRCRnwbKEI=?= ",
    "=?koi8-r?Q?=C1?= "};

/// Charsets that the C library loads one by one.
constexpr std::array<std::string_view, 24> wordsToLoad = {
    "=?l2?q?a?=",  "=?l3?q?a?=",  "=?l4?q?a?=",  "=?l5?q?a?=",   "=?l6?q?a?=",  "=?l7?q?a?=",
    "=?l8?q?a?=",  "=?l10?q?a?=", "=?437?q?a?=", "=?850?q?a?=",  "=?852?q?a?=", "=?855?q?a?=",
    "=?857?q?a?=", "=?860?q?a?=", "=?861?q?a?=", "=?862?q?a?=",  "=?863?q?a?=", "=?865?q?a?=",
    "=?866?q?a?=", "=?869?q?a?=", "=?gbk?q?a?=", "=?big5?q?a?=", "=?uhc?q?a?=", "=?sjis?q?a?="};

/// The last is one that not every C library knows.
constexpr std::array<std::string_view, 3> unknownWords = {"=?x?q?a?=", "=?y?q?a?=", "=?hz?q?a?="};

/// Fields that are all read, of words whose charsets `next()` names.
template <class Next>
std::string wordsIn(std::size_t bytes, Next next) {
    std::size_t words = 0;
    return MessageWriter(bytes)
        .add("From: a@b.example")
        .fillFrom([&] {
            const std::string_view start = words++ % 32 == 0 ? "\nX-Autoreply: =?" : " =?";
            return std::string(start).append(next()).append("?b?pEA=?=");
        })
        .add("\n\nhello\n")
        .take();
}

std::string everyCharset(std::size_t bytes) {
    std::size_t next = 0;
    return wordsIn(bytes, [&] {
        const std::string_view names = charsets[next++ % std::size(charsets)].names;
        return names.substr(0, names.find(' '));
    });
}

/// One charset by ever new names, which differ in bytes that C libraries ignore.
std::string everNewNames(std::size_t bytes) {
    std::size_t number = 0;
    return wordsIn(bytes, [&] {
        std::string name = "big5";
        for (std::size_t bits = ++number; bits > 0; bits /= 2) name += bits % 2 > 0 ? '(' : '+';
        return name;
    });
}

constexpr Family families[] = {
    {"header-lines", [](std::size_t n) { return manyFields(n, "X-Header: a value\n"); }},
    {"short-header-lines", [](std::size_t n) { return manyFields(n, "a:\n"); }},
    {"folded-header", [](std::size_t n) { return longField(n, undeliverable, "X: y\n x\n\t\n"); }},
    {"folds-of-subject", [](std::size_t n) { return longField(n, "Subject: x", "\n x"); }},
    {"mailbox-lines", [](std::size_t n) { return manyFields(n, ">From a\n"); }},
    {"autoreply-fields", [](std::size_t n) { return manyFields(n, "X-Autoreply: nx\n"); }},
    {"content-types", [](std::size_t n) { return manyFields(n, "Content-Type: text/x\n"); }},
    {"long-subject", [](std::size_t n) { return longField(n, "Subject: ", "Undeliverable "); }},
    {"long-from", [](std::size_t n) { return longField(n, "From: ", "postmaster"); }},
    {"from-signs", [](std::size_t n) { return longField(n, "From: x", "@y"); }},
    {"from-open-quotes", [](std::size_t n) { return longField(n, "From: ", "\"(<a "); }},
    {"from-quotes", [](std::size_t n) { return longField(n, "From: ", "\"a\" "); }},
    {"from-brackets", [](std::size_t n) { return longField(n, "From: ", "<"); }},
    {"from-comments", [](std::size_t n) { return longField(n, "From: ", "("); }},
    {"from-names", [](std::size_t n) { return longField(n, "From: ", "Doe, "); }},
    {"recipients", [](std::size_t n) { return longField(n, "To: x@y", ",\n a@b.example"); }},
    {"recipient-fields", [](std::size_t n) { return manyFields(n, "To: a@b.example\n"); }},
    {"address-groups", [](std::size_t n) { return longField(n, "From: ", "g:;"); }},
    {"nested-comments",
     [](std::size_t n) {
         return MessageWriter(n)
             .add("From: ")
             .fillShare("(", 2)
             .fill(")")
             .add(" a@b.example\n\nhello\n")
             .take();
     }},
    {"type-comments", [](std::size_t n) { return longField(n, "Content-Type: ", "(a)("); }},
    {"parameters",
     [](std::size_t n) { return longField(n, "Content-Type: multipart/mixed", ";a=b"); }},
    {"parameter-quotes",
     [](std::size_t n) { return longField(n, "Content-Type: multipart/mixed", ";a=\""); }},
    {"continuations", continuations},
    {"encoded-words",
     [](std::size_t n) { return longField(n, "Subject: ", "=?utf-8?Q?=C3=A9?= "); }},
    {"encoded-words-joined",
     [](std::size_t n) { return longField(n, "Subject: ", "=?utf-16?B?2D0=?=\n "); }},
    {"encoded-words-broken",
     [](std::size_t n) { return longField(n, "Subject: ", "=?utf-8?q?x?"); }},
    {"encoded-words-open", [](std::size_t n) { return longField(n, "Subject: ", "=?"); }},
    {"encoded-word-signs", [](std::size_t n) { return longField(n, "Subject: =?a?b?", "A?"); }},
    {"encoded-words-alternating", [](std::size_t n) { return alternatingWords(n, usualWords); }},
    {"encoded-words-to-load", [](std::size_t n) { return alternatingWords(n, wordsToLoad); }},
    {"encoded-words-unknown", [](std::size_t n) { return alternatingWords(n, unknownWords); }},
    {"encoded-words-every-charset", everyCharset},
    {"encoded-words-new-names", everNewNames},
    {"encoded-word-long", [](std::size_t n) { return longField(n, "Subject: =?utf-8?q?", "=FF"); }},
    {"eight-bit-subject", [](std::size_t n) { return longField(n, "Subject: ", "\x80"); }},
    {"subject-of-patterns", [](std::size_t n) { return subjectOfTable(n, "BounceSubjectList"); }},
    {"subject-of-auto-replies",
     [](std::size_t n) { return subjectOfTable(n, "AutoReplySubjectIndicators"); }},
    {"subject-near-patterns",
     [](std::size_t n) { return longField(n, "Subject: ", "Delivery Status Notificatio"); }},
};

}  // namespace

std::span<const Family> headerFamilies() noexcept { return families; }

}  // namespace bouncecheck::bench
