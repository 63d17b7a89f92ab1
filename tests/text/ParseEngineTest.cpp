#include <bouncecheck/classes/ParseEngine.h>

#include <gtest/gtest.h>

namespace bouncecheck {
namespace {

TEST(ParseEngine, MovesForwardOnly) {
    struct Case {
        std::string_view text;
        std::size_t from;
        bool (*move)(ParseEngine&, StringBuffer&);
        std::string_view captured;
        std::size_t to;
    };
    const Case cases[] = {
        {"abab", 1, [](auto& e, auto&) { return e.seekAndSkip("ab"); }, "", 4},
        {"abab", 3, [](auto& e, auto&) { return !e.seekAndSkip("ab"); }, "", 3},
        {"ab", 1, [](auto& e, auto&) { return e.seekAndSkip(""); }, "", 1},
        {"a<b", 0, [](auto& e, auto&) { return e.skipUntilChar('<'), true; }, "", 1},
        {"a<b", 2, [](auto& e, auto&) { return e.skipUntilChar('<'), true; }, "", 3},
        {"x \t-y", 1, [](auto& e, auto&) { return e.skipUntilNotChar4(' ', '\t', '-', 'a'), true; },
         "", 4},
        {"a b>c", 1, [](auto& e, auto& out) { return e.captureToNext(">x", out), true; }, " b", 3},
        {"ab", 1, [](auto& e, auto& out) { return e.captureToNext("", out), true; }, "b", 2},
        // A position past the end is the end.
        {"ab", 9, [](auto& e, auto& out) { return e.captureToNext("a", out), e.advance(7), true; },
         "", 9},
        {"ab", 9, [](auto& e, auto&) { return !e.seekAndSkip("b") && e.current() == 0; }, "", 9},
    };
    for (const Case& c : cases) {
        ParseEngine engine;
        StringBuffer captured;
        engine.append(c.text);
        engine.m_pos = c.from;
        EXPECT_TRUE(c.move(engine, captured)) << "case " << &c - cases;
        EXPECT_EQ(captured.view(), c.captured) << "case " << &c - cases;
        EXPECT_EQ(engine.m_pos, c.to) << "case " << &c - cases;
    }
}

}  // namespace
}  // namespace bouncecheck
