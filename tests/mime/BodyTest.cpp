#include <algorithm>

#include <bouncecheck/Limits.h>
#include "mime/Charset.h"
#include "mime/HtmlText.h"
#include "mime/MailText.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

using namespace std::string_literals;

TEST(Body, IsDecoded) {
    const Text encoded = "\nContent-Transfer-Encoding: ", base64 = encoded + "BASE64\n\n";
    const Text quoted = encoded + "Quoted-Printable\n\n", plain = "text/plain";
    const Case cases[] = {
        {plain + quoted + "a=\nb=3d=3D= \nc \t\nd=ZZ=0A=4=", "ab==c\r\nd=ZZ\r\n=4"},
        {plain + base64 + "aGV\nsb G8*=\r\nCg==eA", "hello\r\nx"},
        {"x/y" + base64 + "YQpiAA==", "a\nb\0"s},
        {plain + encoded + "x-uuencode\n\npre\nbegin 644 x\n#86)C\n_\n`\nend\nafter", "abc"},
        {plain + "; charset=x-none" + encoded + "x-other\n\n=41 aGk=\0\xE9"s, "=41 aGk=\0\xE9"s},
        {plain + "; charset=windows-1252\n\n\x80", "\u20AC"},
        {plain + "; charset=windows-1252\n\n\u00E9", "\u00E9"},
        {plain + "; charset=\"WCHAR_T(\"\n\nx", "x"},
        {plain + "; charset=\"()\"\n\n\xE9", "\xE9"},
        {plain + "; charset=utf-8\n\n\u00E9\xFFx", "\u00E9\uFFFDx"},
        {"text/plain; charset*0=koi; charset*1*=8%2Dr\n\n\xF0\xD2", "\u041F\u0440"},
        {plain + "; charset=utf-16" + base64 + "//5hAAoA6QA=", "a\r\n\u00E9"},
        {plain + "; charset=gb18030\n\n\xC4\xE3.\xC4", "\u4F60.\uFFFD"},
    };
    expectEach(cases, [](Text mail) { return bodyOf(Email2("Content-Type: " + mail)); });
}

TEST(Body, GoesByTheByteOrderMarkOfItsOwnText) {
    for (const char* charset : {"utf-16", "unicode", "csunicode+", "(UTF)-16"}) {
        EXPECT_EQ(toUtf8("\xFE\xFF\0A"s, charset), "A") << charset;
        EXPECT_EQ(toUtf8("\xFF\xFE"
                         "A\0"s,
                         charset),
                  "A")
            << charset;
    }
    EXPECT_TRUE(isUtf8(toUtf8("\0\x60\x70\0"s, "ucs-4")));
    EXPECT_EQ(toUtf8("\0\0\xFE\xFF\0\0\0A"s, "utf-32"), "A");
    EXPECT_EQ(toUtf8("\xFF\xFE\0\0A\0\0\0"s, "utf-32"), "A");
}

TEST(Body, GrowsToSomeBoundWhenConverted) {
    constexpr std::size_t many = 5'000'000;
    for (const char* charset : {"utf-8", "windows-1252", "tis-620"}) {
        SCOPED_TRACE(charset);
        const Text letters = toUtf8(Text(many, '\xA1'), charset);
        const auto tails = std::ranges::count_if(letters, continuesCharacter);
        EXPECT_LE(tails, limits::charsetGrowth);
        EXPECT_GE(tails, limits::charsetGrowth - 8192);
        EXPECT_TRUE(isUtf8(letters));
        EXPECT_EQ(toUtf8(Text(many, 'a') + "\xA1z", charset).back(), 'z');
    }
}

TEST(Body, EndsBeforeALineEndTooMany) {
    for (const char end : {'\n', '\r'}) {
        const Text ends(limits::lineEnds + 5, end);
        // Two of them belong to the header.
        EXPECT_EQ(bodyOf(Email2("Subject: x" + ends)).size(), 2 * (limits::lineEnds - 2));
    }
}

TEST(Body, HasABoundedTextOfHtml) {
    const Text lines = "<pre>x" + Text(2 * limits::htmlText, '\n');
    EXPECT_EQ(htmlToText(lines).size(), limits::htmlText - 1);
    EXPECT_EQ(htmlToText("<p " + Text(limits::htmlText, 'x') + ">a" + Text(100'000, 'b')).size(),
              100'001);
}

TEST(Body, ReadsHtmlAsText) {
    const Case cases[] = {
        {"<p>a</p><div>b<br>c</div><tr><td>d</td></tr>e", "a|b|c|d|e"},
        {"<style>p{}</style>a<SCRIPT>if (a<b) '</p>'</script >b<!-- <p>c --->d", "abd"},
        {" a \n\t <b>b</b>\nc <pre>d\n  e</pre>f", "a b c|d|  e|f"},
        {"&amp;lt;&eacute;&#233;&#xE9;&x;&#x110000;& &#;", "&lt;\u00E9\u00E9\u00E9&x;\uFFFD& &#;"},
        {"a&#0;b&#128;c&nbsp;&#160;d", "a\uFFFDb\u20ACc d"},
        {"<i title='x>' a=\"y>\">b</i> <a@b> 1 < 2 <3<script>d", "b <a@b> 1 < 2 <3"},
        {"<i a' b=\"'>\" c=\">'\">d</i> <i x=\">e<b>f", "d ef"},
        {"a<b> \t</b>\v\f&#32;b<br> c \n", "a b|c"},
    };
    expectEach(cases, [](Text html) {
        Text lines = htmlToText(html);
        std::replace(lines.begin(), lines.end(), '\n', '|');
        return std::erase(lines, '\r'), lines;
    });
}

TEST(Body, IsChosenAmongParts) {
    const Text text = "--b\n\nplain\n", type = "--b\nContent-Type: ", html = type + "text/html\n\n";
    const Text file = "--b\nContent-Disposition: ATTACHMENT; filename=x\n\nfile\n";
    const Text nested = type + "multipart/x; boundary=c\n\n--c\n" + html.substr(4) + "in\n--c--\n";
    // The plain-text body, a bar, the effective body.
    const Case cases[] = {
        {html + "<b>1\n" + file + text + text, "plain|<b>1"},
        {file + nested + html + "1\n", "in|in"},
        {file + type + "message/rfc822\n\n\nbody\n", "|"},
    };
    expectEach(cases, [](Text parts) {
        const Email2 mail("Content-Type: multipart/mixed; boundary=b\n\n" + parts + "--b--\n");
        return plainOf(mail) + '|' + effectiveOf(mail);
    });
}

}  // namespace
}  // namespace bouncecheck
