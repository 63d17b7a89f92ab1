#include "mime/AddressSpans.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "mime/AddressForms.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

/// The addresses in `line`, divided by a bar.
std::string found(const std::string& line) {
    std::string all;
    for (const AddressSpan& span : findAddresses(line)) {
        all.append(all.empty() ? "" : "|").append(span.in(line));
        EXPECT_TRUE(isUtf8(span.in(line))) << line;
    }
    return all;
}

TEST(AddressSpans, AreWhereAddressesStand) {
    const std::pair<const char*, const char*> cases[] = {
        {"<a@x.example>, <b@localhost> c@localhost", "a@x.example|b@localhost"},
        {"(a@x.example) [b@x.example] 'c@x.example' {d@x.example} `e@x.example'",
         "a@x.example|b@x.example|c@x.example|d@x.example|e@x.example"},
        {"a@x.example, b@x.example;c@x.example... d@x.example:25 e@x.example!",
         "a@x.example|b@x.example|c@x.example|d@x.example|e@x.example"},
        {"a.@x.example .b@x.example c@x.example-", "a.@x.example|b@x.example|c@x.example"},
        {"a@[192.0.2.1] b@[IPv6:2001:db8::1] c@[] d@[1", "a@[192.0.2.1]|b@[IPv6:2001:db8::1]"},
        {"a@192.0.2.1 b@x..example c@.example d@x.e e@ @x.example", ""},
        // a control character stands where something else goes on
        {"<y\xC2\x9C"
         "ann@x.example> <\xE2\x80\xAE"
         "b@x.example> c@x.example\x1B[0m\td@x.example",
         "d@x.example"},
        {"for\r\na@x.example\r\n<b@x.example>\nfailed", "a@x.example|b@x.example"},
        // quotes
        {"\"q r\"@x.example \"q\\\"r\"@x.example", "\"q r\"@x.example|\"q\\\"r\"@x.example"},
        {"\"Joe <a@b.example>\"@x.example", "\"Joe <a@b.example>\"@x.example"},
        {"\"Joe\" <a@x.example>, \"b\"@x.example", "a@x.example|\"b\"@x.example"},
        // labels
        {"550-'a@x.example' 550-b@x.example 550-`c@x.example'",
         "a@x.example|550-b@x.example|c@x.example"},
        {"rcpt=a@x.example to=<b=c@x.example> d+e=f@x.example",
         "a@x.example|b=c@x.example|d+e=f@x.example"},
        {"mailto:a@x.example SMTP:b@x.example rfc822;c@x.example <@relay.example:d@x.example>",
         "a@x.example|b@x.example|c@x.example|d@x.example"},
        // links and paths
        {"https://x.example/?u=a@x.example /var/mail/b@x.example c/d@x.example", ""},
        {"<c/d@x.example>", "c/d@x.example"},
        // no part of what is no address
        {"a@b@c.example a@b.example@c.example a\\@b@c.example", ""},
        // other scripts
        {"宛先a@x.exampleに配信できません。b@x.example、c@x.example",
         "a@x.example|b@x.example|c@x.example"},
        {"ユーザー@例え.テスト почта@пример.рф müller@x.example",
         "ユーザー@例え.テスト|почта@пример.рф|müller@x.example"},
        // blanks and marks outside ASCII
        {"to\u00A0a@x.example\u00A0failed", "a@x.example"},
        {"«a@x.example» „müller@müller.example“ · ü@x.example… –b@x.example–",
         "a@x.example|müller@müller.example|ü@x.example|b@x.example"},
        {"\uFEFFa@x.example\u200B 收件人：почта@пример.рф，", "a@x.example|почта@пример.рф"},
    };
    for (const auto& [line, expected] : cases) EXPECT_EQ(found(line), expected) << line;
    EXPECT_FALSE(findAddresses("<a@x.example").front().isBracketed);
    EXPECT_TRUE(findAddresses("<a@x.example>").front().isBracketed);
}

/// The start, or the end, of a long address may be the address of somebody else.
TEST(AddressSpans, AreNoPartOfWhatIsTooLong) {
    const auto many = [](std::size_t count, const char* text) {
        std::string all;
        while (count-- > 0) all += text;
        return all;
    };
    const std::pair<std::string, bool> cases[] = {
        {many(256, "a") + "@x.example", true},           {many(257, "a") + "@x.example", false},
        {"<" + many(257, "a") + "@x.example>", false},   {many(300, "a") + "=b@x.example", false},
        {"\"" + many(300, "a") + "\"@x.example", false}, {many(129, "é") + "@x.example", false},
        {"a@" + many(126, "x.") + "xxx", true},          {"a@" + many(126, "x.") + "xxxx", false},
        {"a@" + many(124, "é") + ".example", false},     {"a@[" + many(300, "1") + "]", false},
        {many(300, "*") + "a@x.example", true},
    };
    for (const auto& [line, isFound] : cases) EXPECT_EQ(!found(line).empty(), isFound) << line;
    EXPECT_EQ(found(many(300, "a") + "@x.example b@x.example"), "b@x.example");
}

TEST(AddressForms, AreDecoded) {
    const std::pair<const char*, const char*> xtext[] = {
        {"a+2Bb+3Dc@x", "a+b=c@x"}, {"a+2bb+40c@x", "a+2bb+40c@x"}, {"a+2", "a+2"}};
    for (const auto& [form, expected] : xtext) EXPECT_EQ(decodeXtext(form), expected);
    const std::pair<const char*, const char*> escaped[] = {
        {"\\x{FC}\\x{e9}@x", "üé@x"}, {"\\x{1F600}\\x{0000FC}@x", "😀ü@x"}, {"\\x\\x{FC}", "\\xü"}};
    for (const auto& [form, expected] : escaped) EXPECT_EQ(decodeUtf8Address(form), expected);
    for (const char* wrong : {"\\x{}@x", "\\x{G}@x", "\\x{FC", "\\x{00000FC}@x", "\\x{110000}@x",
                              "\\x{D800}@x", "\\x{A}@x", "\\x{7F}@x", "\\x{85}@x", "a\\x{40}b@x"}) {
        EXPECT_EQ(decodeUtf8Address(wrong), wrong);
    }
}

TEST(AddressForms, AreFreedFromRewriting) {
    const std::pair<const char*, const char*> cases[] = {
        {"prvs=1234abcdef=a@x.example", "a@x.example"},
        {"PRVS=1234=a=b@x.example", "a=b@x.example"},
        {"SRS0=HHH=TT=x.example=a@f.example", "a@x.example"},
        {"srs0+HHH=TT=x.example=a=b@f.example", "a=b@x.example"},
        {"SRS1=HHH=g.example==HHH=TT=x.example=a@f.example", "a@x.example"},
    };
    for (const auto& [form, expected] : cases) EXPECT_EQ(withoutRewriting(form), expected);
    for (const char* wrong :
         {"prvs==a@x", "prvs=1234=@x", "prvs=1234@x", "prvs=1=a", "SRS0=HHH=TT=x=a@f",
          "SRS0=HHH=TT=x.example=@f", "SRS0=HHH=TT=x.example@f", "SRS0==TT=x.example=a@f",
          "SRS0HHH=TT=x.example=a@f", "SRS1=HHH=g=HHH=TT=x.example=a@f", "SRS0=", "@"}) {
        EXPECT_EQ(withoutRewriting(wrong), wrong);
    }
}

}  // namespace
}  // namespace bouncecheck
