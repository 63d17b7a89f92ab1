#include "text/ParseEngine.h"

#include <gtest/gtest.h>

namespace bouncecheck {
namespace {

using namespace std::string_view_literals;

TEST(ParseEngine, MovesOverItsText) {
    struct Case {
        std::string operation;
        std::string_view text;
        std::size_t from, to;
        std::string_view captured = "";
    };
    const Case cases[] = {
        {"seek", "x<ab\0<ab"sv, 2, 8, "found"},
        {"seek", "x<ab<AB", 2, 2},
        {"white", " \t\r\n\r \0 "sv, 0, 6},
        {"until", "a\0b;c"sv, 0, 3},
        {"capture", "<u@h.example>\n", 1, 12, "u@h.example"},
        {"capture", "a\0b"sv, 0, 3, "a\0b"sv},
        {"seek", "<ab", 4, 3},
        {"capture", "ab", std::string::npos, 2},
    };
    for (const Case& c : cases) {
        ParseEngine engine;
        engine.appendN(c.text.data(), static_cast<unsigned>(c.text.size()));
        engine.m_pos = c.from;
        StringBuffer out;
        if (c.operation == "seek" && engine.seekAndSkip("<ab")) out.append("found");
        if (c.operation == "white") engine.skipUntilNotChar4(' ', '\t', '\r', '\n');
        if (c.operation == "until") engine.skipUntilChar(';');
        if (c.operation == "capture") engine.captureToNext(">\r\n\t", out);
        EXPECT_EQ(std::min(engine.m_pos, c.text.size()), c.to);
        EXPECT_EQ(out.view(), c.captured) << c.operation << " in " << c.text;
    }
}

}  // namespace
}  // namespace bouncecheck
