#include "reasons/ReplyText.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "text/Ascii.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

TEST(ReplyText, HasPhrasesAsTheTablesHaveThem) {
    struct Case {
        std::string_view text;
        std::string_view plain;
    };
    const Case cases[] = {
        {"no such  user\r\n\there", "no such user here"},
        // codes, where they begin a line or go on with one
        {"550-5.1.1 no such\r\n550 5.1.1 user", " no such user"},
        {"error 550 in line 4 of 25", "error 550 in line 4 of 25"},
        {"550 no\n550-such\n554", "no such 554"},
        // a blank line, which no phrase goes on behind
        {"spam\r\n\r\n\r\nMessage", "spam \nMessage"},
        {"spam\n> \n> Message\n", "spam \nMessage "},
        // marks of quoting
        {"> no\n> such\n* user <b>", " no such user <b>"},
        // addresses, but no part of one
        {"user <a.b@x.example>: unknown (a+b@x.example.)", "user @: unknown (@.)"},
        {"5a@x.example 5.1.1@x.example *c@x.example", "@ @ @"},
        {"a@ b@@c <@> @d <e", "a@ b@@c <@> @d <e"},
        {"x@y.example.in z", "@ z"},
        // letters of two bytes, whole and cut, and what is typeset
        {"\xC3\x84\xC3\x97\xD0\x9D\xD0\xA0", "a\xC3\x97\xD0\xBD\xD1\x80"},
        {"\xC3\x86\xC3\xB1\xC4\x99\xC5\x81\xC5\xBF", "\xC3\xA6nels"},
        {"\xC3 \xC4", "\xC3 \xC4"},
        {"don\xE2\x80\x99t\xC2\xA0\xE3\x80\x80\xE4\xB8\x8D\xE5\xAD\x98",
         "don't \xE4\xB8\x8D\xE5\xAD\x98"},
        {"\xE4\xB8\x8D"
         "a@x.example\xE5\xAD\x98",
         "\xE4\xB8\x8D@\xE5\xAD\x98"},
    };
    for (const Case& c : cases) {
        const ReplyText reply(c.text);
        EXPECT_EQ(reply.view(), c.plain) << c.text;
        // A part is quoted from the text, and reads as itself there if a letter begins it and none
        // is cut.
        for (std::size_t at = 0; at < c.plain.size(); ++at) {
            for (std::size_t length = 1; length <= c.plain.size() - at; ++length) {
                const TextPart part = reply.inText({at, length});
                ASSERT_LE(part.at + part.length, c.text.size());
                ASSERT_GE(part.length, 1U) << c.text << " at " << at;
                const std::string_view found = c.text.substr(part.at, part.length);
                const std::string_view plain = c.plain.substr(at, length);
                if (ascii::isAlpha(plain[0]) && isAsciiLine(plain)) {
                    EXPECT_EQ(ReplyText(found).view(), plain) << c.text;
                }
            }
        }
    }
    struct Place {
        std::string_view text;
        TextPart part;
        std::size_t at;
        std::string_view found;
    };
    const Place places[] = {
        {"550-no such\r\n550 user, sorry", {3, 9}, 7, "such\r\n550 user"},
        // words that an address has, too, or that are said twice
        {"<is.gone@x.example> gone", {2, 4}, 20, "gone"},
        {"550 no 551-no", {3, 2}, 11, "no"},
    };
    for (const Place& place : places) {
        const TextPart part = ReplyText(place.text).inText(place.part);
        EXPECT_EQ(part.at, place.at) << place.text;
        EXPECT_EQ(place.text.substr(part.at, part.length), place.found);
    }
}

}  // namespace
}  // namespace bouncecheck
