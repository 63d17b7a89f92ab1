#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <string>

#include "text/ExtPtrArray.h"
#include "text/ParseEngine.h"
#include "text/StringBuffer.h"

namespace bouncecheck {
namespace {

using Text = std::string;

/// Short texts over few letters, so that everything happens often.
class Generator {
public:
    Text text(std::size_t longest) {
        Text out;
        for (std::size_t left = random_() % (longest + 1); left > 0; --left) out += letter();
        return out;
    }
    /// A text as C code hands it over: up to its first NUL.
    Text phrase(std::size_t longest) { return text(longest).c_str(); }
    char letter() { return "aAb \t\n<\0"[random_() % 8]; }
    unsigned number(unsigned below) { return static_cast<unsigned>(random_() % below); }

private:
    std::mt19937 random_{20261121};
};

Text small(Text text) {
    for (char& c : text) c = c == 'A' ? 'a' : c;
    return text;
}

/// Replaces up to `times` places, looking for each from the left.
Text replaced(Text text, const Text& from, const Text& to, bool ignoreCase, int times) {
    for (std::size_t i = 0; !from.empty() && times > 0 && i + from.size() <= text.size();) {
        const Text here = text.substr(i, from.size());
        if (ignoreCase ? small(here) == small(from) : here == from) {
            text = text.substr(0, i) + to + text.substr(i + from.size());
            i += to.size();
            --times;
        } else {
            ++i;
        }
    }
    return text;
}

TEST(StringBuffer, EditsAsItsPlainRestatement) {
    Generator generate;
    for (int round = 0; round < 20'000; ++round) {
        const Text text = generate.text(12);
        const Text from = generate.phrase(2);
        const Text to = generate.phrase(3);
        const char letter = generate.letter();
        const bool ignoreCase = generate.number(2) == 1;
        const unsigned n = generate.number(14);
        SCOPED_TRACE("\"" + text + "\", \"" + from + "\", \"" + to + "\"");
        const char* const what = from.c_str();
        const Text one(1, letter);
        const Text white = " \t\n";
        const std::size_t first = std::min(text.find_first_not_of(white), text.size());
        const Text trimmed = text.substr(first, text.find_last_not_of(white) + 1 - first);
        const std::size_t mark = ignoreCase ? small(text).find(small(from)) : text.find(from);

        struct Edit {
            Text expected;
            std::function<void(StringBuffer&)> run;
        };
        const Edit edits[] = {
            {replaced(text, from, to, false, 99),
             [&](auto& b) { b.replaceAllOccurances(what, to.c_str()); }},
            {replaced(text, from, to, ignoreCase, 1),
             [&](auto& b) { b.replaceFirstOccurance(what, to.c_str(), ignoreCase); }},
            {replaced(text, from, one, false, 99),
             [&](auto& b) { b.replaceAllWithUchar(what, static_cast<unsigned char>(letter)); }},
            {replaced(text, one, "", false, 99), [&](auto& b) { b.removeCharOccurances(letter); }},
            {text.substr(0, text.find(letter)), [&](auto& b) { b.chopAtFirstChar(letter); }},
            {from.empty() ? text : text.substr(0, mark),
             [&](auto& b) { b.chopAtSubstr(what, ignoreCase); }},
            {text.substr(0, text.size() - std::min<std::size_t>(n, text.size())),
             [&](auto& b) { b.shorten(n); }},
            {trimmed, [](auto& b) { b.trim2(); }},
            {text + from.substr(0, from.find_first_of(white)),
             [&](auto& b) { b.captureNonWS(what); }},
        };
        for (const Edit& edit : edits) {
            StringBuffer buffer;
            buffer.setString(std::string_view(text));
            edit.run(buffer);
            ASSERT_EQ(buffer.view(), edit.expected) << "edit " << &edit - edits;
        }

        Text joined;
        StringBuffer buffer;
        buffer.setString(std::string_view(text));
        ExtPtrArraySb fields;
        buffer.split(fields, letter, false, false);
        for (int i = 0; i < fields.getSize(); ++i) {
            joined += (i ? one : "") + Text(fields.elementAt(i)->view());
        }
        ASSERT_EQ(fields.getSize(), 1 + std::ranges::count(text, letter));
        ASSERT_EQ(joined, text);
    }
}

TEST(ParseEngine, MovesAsItsPlainRestatement) {
    Generator generate;
    for (int round = 0; round < 20'000; ++round) {
        ParseEngine engine;
        const Text text = generate.text(10);
        engine.append(text);
        std::size_t at = 0;
        for (int step = 0; step < 6; ++step) {
            const Text piece = generate.phrase(2);
            const char letter = generate.letter();
            SCOPED_TRACE("\"" + text + "\" at " + std::to_string(at) + ", \"" + piece + "\"");
            StringBuffer out;
            const std::size_t from = at;
            switch (generate.number(4)) {
                case 0: {
                    const std::size_t found = text.find(piece, at);
                    ASSERT_EQ(engine.seekAndSkip(piece.c_str()), found != Text::npos);
                    if (found != Text::npos) at = found + piece.size();
                    break;
                }
                case 1:
                    engine.skipUntilChar(letter);
                    while (at < text.size() && text[at] != letter) ++at;
                    break;
                case 2:
                    engine.skipUntilNotChar4(' ', '\t', letter, 'b');
                    while (at < text.size() && (Text(" \tb") + letter).find(text[at]) != Text::npos)
                        ++at;
                    break;
                default:
                    engine.captureToNext(piece.c_str(), out);
                    while (at < text.size() && piece.find(text[at]) == Text::npos) ++at;
                    ASSERT_EQ(out.view(), text.substr(from, at - from));
            }
            ASSERT_EQ(engine.m_pos, at);
        }
    }
}

TEST(ParseEngine, TakesAPositionPastTheEndForTheEnd) {
    ParseEngine engine;
    engine.appendN("ab", 2);
    engine.m_pos = Text::npos;
    StringBuffer out;
    engine.captureToNext("x", out);
    engine.advance(7);
    engine.skipUntilChar('b');
    EXPECT_FALSE(engine.seekAndSkip("b"));
    EXPECT_TRUE(out.isEmpty() && engine.rest().empty() && engine.current() == 0);
}

}  // namespace
}  // namespace bouncecheck
