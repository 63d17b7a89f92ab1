#include <bouncecheck/Limits.h>
#include "mime/MailText.h"

namespace bouncecheck {
namespace {

const Text type = "Content-Type: ", inner = type + "multipart/x; boundary=";
const Text outer = inner + "b\n\n";

using Ends = std::array<const char*, 3>;
Text withLineEnds(const Text& text, const Ends& inTurn) {
    Text out;
    for (std::size_t i = 0; const char c : text) c == '\n' ? out += inTurn[i++ % 3] : out += c;
    return out;
}

TEST(Structure, IsTheSameForAllLineEnds) {
    Text lines;
    for (std::size_t length = 0; length < 200; ++length) lines += Text(length, 'x') + "\n";
    const Case cases[] = {
        {"Subject: x\n\n" + lines, "[" + lines + "]"},
        {"From a@b Mon Jan  1\nX: y\n>From a b\nTo: x\n\n1", "[1]"},
        {"\xEF\xBB\xBF\nFrom a@b Mon Jan  1\nTo: x\n\n1", "[1]"},
        {"From a@b Mon\n\n\xEF\xBB\xBFTo: x\n\n1", "[1]"},
        {"From : a@b\nTo: x\n\n1", "[1]"},
        {"Subject: x\n\n\n one\n\ntwo\n", "[\n one\n\ntwo\n]"},
        {"no header\n\nSubject: x\n", "[no header\n\nSubject: x\n]"},
        {"Subject: x\nno blank line\n\nx", "[no blank line\n\nx]"},
        {outer + "pre\n--b\n\n1\n--b\n\n2\n\n--b--\nepilogue\n--b\n\n3\n", "([1][2\n])"},
        {outer + "--b\n--b \t\n\n--bb\n --b\n--b-- \n", "([][--bb\n --b])"},
        {outer + "--b\n" + inner + "b2\n\n--b2\n\n1\n--b2--\n--b\n\n2\n--b--", "(([1])[2])"},
        {outer + "--b\n" + inner + "c\n\n--c\n\n1\n--b\n\n2\n--c\n--b--", "(([1])[2\n--c])"},
        {outer + "--b\n" + inner + "b\n\n--b\n\n1\n--b--\n--b\n\n2\n--b--", "(([1])[2])"},
        {inner + "bb\n\n--bb\n" + inner + "b\n\n--b\n\n1\n--bb\n\n2", "(([1])[2])"},
        {type + "multipart/digest; boundary=b\n\n--b\n\nTo: x\n", "(message/rfc822[To: x\n])"},
        {outer + "--b\n" + type + "message/x\n\n" + inner + "c\n\n--c",
         "(message/x[" + inner + "c\n\n--c])"},
        {type + "multipart/x\n\n--b\n\n1\n--b--\n", "multipart/x[--b\n\n1\n--b--\n]"},
        {type + "garbage\n\nx", "[x]"},
        {outer + "--b\n \na: b\n--b\n c\na: b\n\n1\n--b--", "([ \na: b][1])"},
        {type + "\"a b\"/x,y\n\nx", "[x]"},
        {type + "text/html,x\n\nx", "[x]"},
    };
    const Ends crlf{"\r\n", "\r\n", "\r\n"}, cr{"\r", "\r", "\r"}, mixed{"\n", "\r", "\r\n"},
        noBareCr{"\n", "\r\n", "\n"};
    expectEach(cases, [&](Text text) {
        for (const Ends& ends : {crlf, cr, mixed, noBareCr})
            EXPECT_EQ(everyAnswer(Email2(withLineEnds(text, ends))), everyAnswer(Email2(text)));
        Text outline = outlineOf(Email2(text));
        return std::erase(outline, '\r'), outline;
    });
}

TEST(Structure, HandsOutParts) {
    const Text leaf = type + "X/Y\n\n";
    const Email2 mail(outer + "--b\n" + inner + "c\n\n--c\n" + leaf + "1\n--b\n" + leaf + "2");
    EXPECT_TRUE(Email2(type + "Multipart/Report; x").isMultipartReport());
    EXPECT_FALSE(mail.getPart(-1));
    EXPECT_FALSE(mail.getPart(2));
    EXPECT_FALSE(mail.getPart(1)->getPart(0));
    EXPECT_EQ(mail.findContentType("x/y"), mail.getPart(0)->getPart(0));
    EXPECT_EQ(mail.findContentType("multipart/x"), &mail);
    EXPECT_FALSE(mail.findContentType(nullptr));
    EXPECT_TRUE(mail.getPart(1)->getNonMultipartBody3());
    EXPECT_FALSE(mail.getNonMultipartBody3());
}

TEST(Structure, StopsAtItsLimits) {
    Text deep, wide = outer;
    for (Text b = "b"; b.size() < 100; b += 'b') deep += inner + b + "\n\n--" + b + '\n';
    for (std::size_t i = 0; i < limits::parts; ++i) wide += "--b\n\nx\n";
    const Email2 tower(deep + "\nend"), row(wide + "--b\n\nbeyond"), *last = &tower;
    std::size_t levels = 0;
    while (last->getNumParts() > 0) last = last->getPart(0), ++levels;
    EXPECT_EQ(levels, limits::nesting);
    EXPECT_TRUE(bodyOf(*last).starts_with("--bbb"));
    EXPECT_TRUE(bodyOf(*last).ends_with("\r\nend"));
    EXPECT_EQ(row.getNumParts(), static_cast<int>(limits::parts));
    EXPECT_TRUE(rawBodyOf(row).ends_with("beyond"));
}

}  // namespace
}  // namespace bouncecheck
