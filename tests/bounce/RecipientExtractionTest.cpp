#include "bounce/RecipientExtraction.h"

#include <gtest/gtest.h>

#include <cctype>
#include <iterator>
#include <random>
#include <string>

#include <bouncecheck/LogNull.h>
#include "bounce/Marker.h"
#include "bounce/tables/BounceDataMarkers.h"
#include "support/Classification.h"
#include "text/Search.h"

namespace bouncecheck {
namespace {

using Outcome = MarkerOutcome;

struct Captured {
    Outcome outcome;
    std::string address;

    bool operator==(const Captured&) const = default;
};

Captured capture(std::string_view text, std::string_view entry) {
    const Marker marker(entry);
    const std::size_t place = findBytes(text, marker.text);
    if (place == npos || !contains(text, marker.context)) return {Outcome::notApplicable, ""};
    StringBuffer address;
    const Outcome outcome = MarkerCaptures(text).behind(marker, place, address);
    return {outcome, std::string(address.view())};
}

TEST(MarkerCapture, FindsTheAddressBehindAMarker) {
    struct Case {
        std::string_view text;
        std::string_view entry;
        Outcome outcome;
        std::string_view address;
    };
    constexpr auto none = Outcome::notApplicable;
    constexpr auto some = Outcome::candidate;
    using namespace std::string_view_literals;
    const Case cases[] = {
        {"To:  <a@x.example>", "To:", some, "a@x.example"},
        {"no marker", "To:", none, ""},
        {"To:", "To:", some, ""},
        {"To: a[AT]x[DOT]example", "To:", some, "a@x.example"},
        {"To: \"Ann \n B\" <a@x.example>", "To:", some, "a@x.example"},
        {"To: \"never closed a@x.example", "To:", some, ""},
        {"To: \"", "To:", some, ""},
        {"To:\r\n* a@x.example", "To:", some, "a@x.example"},
        {"To: <Ann B a@x.example> c", "To:", some, "Ann B a@x.example"},
        {"To: Ann <a@x.example>", "To:", some, "a@x.example"},
        {"To: Ann\r\n<a@x.example>", "To:", some, ""},
        {"To: 'a@x.example'...", "To:", some, "a@x.example'"},
        {"To: 'a@x.example'", "To:", some, "a@x.example"},
        {"To: <a@x.example><mailto:b@x.example>", "To:", some, "a@x.example"},
        {"To: <mailto:a@x.example>", "To:", some, "mailtoa@x.example"},
        {"To: (a@x.example)...", "To:", some, "a@x.example"},
        {"To: a@x.example/path", "To:", some, "a@x.example"},
        {"To: a+AEA-x+AF8-y.example", "To:", some, "a@x_y.example"},
        {"To: <a+AEA-x@y.example", "To:", some, "a@x@y.example"},
        {"To: \"a\"a@x.example\">a@x.example", "To:", some, "a@x.example"},
        {"To: a@x.examplea@x.example", "To:", some, "a@x.example"},
        {"To: a@x.exampleb@x.example", "To:", some, "a@x.exampleb@x.example"},
        {"To: Postmaster@x.example", "To:", Outcome::postmaster, ""},
        {"To: a@x.example\0 b"sv, "To:", some, "a@x.example\0"sv},
        {"To: a@x.example, then ctx", "[ctx]To:", some, "a@x.example,"},
        {"To: a@x.example", "[ctx]To:", none, ""},
        {"To: a@x.example ctx To: b@x.example", "[[ctx]To:", some, "b@x.example"},
        {"To: a@x.example ctx", "[[ctx]To:", none, ""},
        {"open To: a@x.example", "[open To:", some, "a@x.example"},
        {"open To: a@x.example", "[[open To:", some, "a@x.example"},
        {"failed:] a@x.example", "failed:]", some, "a@x.example"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        const Captured result = capture(c.text, c.entry);
        EXPECT_EQ(result.outcome, c.outcome);
        EXPECT_EQ(result.address, c.address);
    }
}

TEST(MarkerCapture, ReadsTheTextSomeTimesOverAndThenLines) {
    const std::string text = "To:" + std::string(5000, ' ') + "postmaster@x.example";
    const Marker marker("To:");
    MarkerCaptures captures(text);
    StringBuffer address;
    std::size_t times = 0;
    while (times < 100 && captures.behind(marker, 0, address) == Outcome::postmaster) ++times;
    EXPECT_GE(times, 4);
    EXPECT_LE(times, 5);
    // No half address then.
    EXPECT_EQ(captures.behind(Marker(std::string(4017, ' ')), 3, address), Outcome::candidate);
    EXPECT_EQ(address.view(), "");
}

TEST(MarkerCapture, TakesNoWordAsLongAsAMessage) {
    const std::string longWord(1'100'000, 'x');
    EXPECT_EQ(capture("To: a@" + longWord, "To:"), (Captured{Outcome::candidate, ""}));
    EXPECT_EQ(capture("To: x <a@" + longWord, "To:"), (Captured{Outcome::candidate, ""}));
    StringBuffer address;
    EXPECT_FALSE(pickBefore("is no longer", "to " + longWord + "@ is no longer", address));
}

/// The capture once more, over plain strings and as slowly as it likes.
Captured captureSlowly(const std::string& text, std::string entry) {
    std::string context;
    bool isDouble = false;
    if (entry.rfind("[", 0) == 0) {
        isDouble = entry.rfind("[[", 0) == 0;
        const std::string rest = entry.substr(isDouble ? 2 : 1);
        const auto close = rest.find(']');
        entry = close == npos ? rest : rest.substr(close + 1);
        if (close != npos) context = rest.substr(0, close);
        isDouble = isDouble && close != npos;
        if (text.find(context) == npos) return {Outcome::notApplicable, ""};
    }
    std::size_t at = text.find(entry, isDouble ? text.find(context) + context.size() : 0);
    if (at == npos) return {Outcome::notApplicable, ""};
    at += entry.size();

    const auto isIn = [&](std::size_t i, const std::string& set) {
        return i < text.size() && set.find(text[i]) != npos;
    };
    const auto skipBlanks = [&] {
        while (isIn(at, " \t\r\n")) ++at;
    };
    const auto until = [&](const std::string& stops) {
        std::string word;
        while (at < text.size() && !isIn(at, stops)) word += text[at++];
        return word;
    };
    skipBlanks();
    if (isIn(at, "\"")) {
        ++at;
        until("\"");
        if (at < text.size()) ++at;
        skipBlanks();
    } else if (isIn(at, "*")) {
        ++at;
        skipBlanks();
    }
    std::string a = until(" \t\r\n");
    const auto replace = [&](const std::string& from, const std::string& to) {
        for (std::size_t i = 0; (i = a.find(from, i)) != npos; i += to.size()) {
            a.replace(i, from.size(), to);
        }
    };
    if (a.find('@') == npos && a.rfind("<", 0) == 0) a += until(">\r\n\t");
    replace("[AT]", "@");
    replace("[DOT]", ".");
    if (a.find('@') == npos) {
        std::size_t i = at;
        while (i < text.size() && !isIn(i, "<\r\n")) ++i;
        if (isIn(i, "<")) {
            at = i + 1;
            a = until(" \t\r\n");
        }
    }
    if (!a.empty() && a[0] == '<' && a.find("<mailto") != 0) a = a.substr(0, a.find("<mailto"));
    if (!a.empty() && a.front() == '\'') a.erase(0, 1);
    if (!a.empty() && a.back() == '\'') a.pop_back();
    for (const char* c : {"<", ">", "`", ";", "\"", ":", "(", ")", "[", "]"}) replace(c, "");
    a = a.substr(0, a.find('/'));
    while (!a.empty() && a.back() == '.') a.pop_back();
    replace("+AEA-", "@");
    replace("+AF8-", "_");
    while (!a.empty() && std::isspace(a.front())) a.erase(0, 1);
    while (!a.empty() && std::isspace(a.back())) a.pop_back();
    if (a.find('@') == npos) a.clear();
    const std::string half = a.substr(0, a.size() / 2);
    if (std::ranges::count(a, '@') == 2 && a == half + half) a = half;
    for (std::size_t i = 0; i + 10 <= a.size(); ++i) {
        if (ascii::equalsNoCase(std::string_view(a).substr(i, 10), "postmaster")) {
            return {Outcome::postmaster, ""};
        }
    }
    return {Outcome::candidate, a};
}

TEST(MarkerCapture, AgreesWithItsSlowRestatement) {
    const char* const pieces[] = {
        "a@x.example", "b",        " ",     "\t",  "\r\n", "\n",   "<",    ">",
        "\"",          "'",        "*",     "/",   ".",    ":",    "[AT]", "[DOT]",
        "@",           "<mailto:", "+AEA-", "(",   ")",    "ctx",  "To:",  "To:",
        "postMaster",  "[",        "]",     "a@b", "a@b",  "+AF8-"};
    const char* const entries[] = {"To:", "[ctx]To:", "[[ctx]To:", "[To:", "ctx\n", "a@b]"};
    std::mt19937 random(20261121);
    const auto pick = [&](const auto& from) { return from[random() % std::size(from)]; };
    for (int round = 0; round < 40'000; ++round) {
        std::string text = random() % 2 ? "To:" : "";
        for (auto left = random() % 14; left > 0; --left) text += pick(pieces);
        const std::string entry = pick(entries);
        ASSERT_EQ(capture(text, entry), captureSlowly(text, entry)) << entry << " in " << text;
    }
}

TEST(PickBeforeNoLongerValid, TakesTheWordBeforeThePhrase) {
    struct Case {
        std::string text;
        bool picked;
        const char* address;
    };
    const std::string phrase = "is no longer a valid email address";
    const Case cases[] = {
        {"The a@x.example " + phrase, true, "a@x.example"},
        {"x\na@x.example\r\n" + phrase, true, "a@x.example"},
        {"a@x.example " + phrase, false, ""},
        {" a@x.example " + phrase, false, ""},
        {"The @x.example " + phrase, true, "@x.example"},
        {"@ " + phrase, false, ""},
        {"nobody " + phrase, false, ""},
        {phrase, false, ""},
        {"see who\ta@x.example " + phrase, true, "who"},
        {"see \ta@x.example " + phrase, true, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        StringBuffer address;
        EXPECT_EQ(pickBefore(phrase, c.text, address), c.picked);
        EXPECT_EQ(address.view(), c.address);
    }
}

TEST(ScanWords, TakesTheFirstWordWithAnAtOfAShortNotice) {
    struct Case {
        std::string text;
        const char* address;
    };
    const std::string notice = "x '<a@x.example>;' b@x.example";
    const Case cases[] = {
        {notice, "a@x.example"},
        {"x \r\na@x.example\r\n - no", "a@x.example\r\n"},
        {notice + std::string(3999 - notice.size(), '.'), "a@x.example"},
        {notice + std::string(4000 - notice.size(), '.'), ""},
        {"nobody here", ""},
    };
    for (const Case& c : cases) {
        StringBuffer text;
        StringBuffer address;
        text.setString(std::string_view(c.text));
        scanWords(text, address);
        EXPECT_EQ(address.view(), ascii::trim(c.address));
    }
}

TEST(BounceDataMarkers, AllCaptureBehindThemselves) {
    for (const char* const* entry = BounceDataMarkers; **entry; ++entry) {
        SCOPED_TRACE(*entry);
        std::string_view marker = *entry;
        std::string text = "Hello. ";
        if (marker.starts_with('[')) {
            marker.remove_prefix(marker.starts_with("[[") ? 2 : 1);
            const std::size_t close = marker.find(']');
            text.append(marker.substr(0, close)).append(" ");
            marker.remove_prefix(close + 1);
        }
        text.append(marker).append(" <a@x.example>\r\n");
        EXPECT_EQ(capture(text, *entry), (Captured{Outcome::candidate, "a@x.example"}));
    }
}

}  // namespace
}  // namespace bouncecheck
