#include <random>
#include <sstream>

#include "mime/MailText.h"
#include "text/Search.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

const Text complicated =
    "From a@b Mon\r\nFROM : =?utf-8?Q?J=C3?=\r\n =?utf-8?B?tg==?= (x \\( y) <@r:\"a b\"@c>\n"
    "To: T: \"A, a\" <a@b>, c@d;\nCc: x, y@z\rSubject: caf\xE9 =?iso-2022-jp?B?GyRCRnxLXBsoQg==?="
    "\nX-Any: =?koi8-r?Q?a=F0b?=\nContent-Type: multipart/x; boundary*0=\"a b\"; boundary*1*=%63\n"
    "\npre\n--a bc\nContent-Type: multipart/x; boundary=a\n\n--a\nContent-Transfer-Encoding:quoted-"
    "printable\nContent-Type: text/plain; "
    "charset=utf-8\n\nx=C3=A9=\ny\n\n--a\nContent-Type:text/html;"
    "charset=utf-16\nContent-Transfer-Encoding: base64\n\nPABwAD4AJgBhAG0AcAA7AA==\n--a--\n--a bc\n"
    "Content-Type: message/delivery-status\n\nY: 1\n\nX: failed\n (x)\n\n--a bc\nContent-Type: mess"
    "age/rfc822\n\nTo: <b@c>\n\n<p>\n--a bc\nContent-Transfer-Encoding: x-uuencode\n\nbegin 644 x\n"
    "#86)C\n`\nend\n--a bc--\nepilogue\n";

/// Answers everything, twice the same, header text in UTF-8 and body lines with CRLF.
void expectSound(const Text& text) {
    const Email2 mail(text);
    const Text answers = everyAnswer(mail), body = ' ' + plainOf(mail) + ' ';
    EXPECT_EQ(everyAnswer(mail), answers);
    EXPECT_TRUE(isUtf8(subjectOf(mail) + '|' + fromOf(mail) + '|' + nameOf(mail))) << text;
    for (std::size_t i = 1; i < body.size(); ++i) EXPECT_EQ(body[i - 1] == '\r', body[i] == '\n');
}

TEST(HostileMail, AnswersEverythingForPrefixesAndMutations) {
    for (std::size_t i = 0; i < complicated.size(); ++i) expectSound(complicated.substr(0, i));
    std::mt19937 random(20240503);
    for (int i = 0; i < 6'000; ++i) {
        Text text = complicated;
        for (auto n = random() % 12; n > 0; --n) {
            const std::size_t at = random() % text.size(), from = random() % text.size();
            if (n % 3 == 0) text.insert(at, text.substr(from, random() % 60));
            if (n % 3 == 1) text[at] = static_cast<char>(random());
            if (n % 3 == 2) text[at] = "\r\n \t-=?:;\"()<>@,\\"[random() % 17];
        }
        expectSound(text);
    }
}

// Where the time grows with the square of the size, these do not come to an end.
TEST(HostileMail, FinishesOnBigShapes) {
    const auto finish = [](const Text& head, const char* pieces) {
        std::istringstream input(pieces);
        for (Text piece; std::getline(input, piece, '~');) {
            Text text = "Subject: before\n" + head;
            for (int i = 0; i < 100'000; ++i) text += piece;
            EXPECT_TRUE(contains(everyAnswer(Email2(text + '\n')), "before")) << head << piece;
        }
    };
    const Text mixed = "Content-Type: multipart/x; ", coded = "Content-Transfer-Encoding: ";
    for (const Text& name : {Text("From: "), Text("To: "), Text("X-Any: "), mixed, coded}) {
        finish(name, "(~(a)~\"~\\\"~<~<a@b>,~a:;~@~;~x=y;~boundary*0*=''%~ \t~\n x");
        finish(name, "=?utf-8?Q?~=?utf-8?B?w6k=?= ~=?~x~\nX-Other: x");
    }
    for (const char* name : {"quoted-printable", "base64", "x-uuencode\n\nbegin 6 x"})
        finish(coded + name + "\n\n", "=~= ~ ~begin 6 x\n~=\n~xxxxxxxxxx");
    finish("Content-Type: text/html\n\n", "<~<!--~<p~<p a='~<script>~<style></~&~&#~</~<pre>~<p>");
    finish(mixed + "boundary=b\n\n", "--b\n~--bx\n--\n");
    Text nested;
    for (int i = 0; i < 10'000; ++i)
        nested += mixed + "boundary=" + std::to_string(i) + "\n\n--" + std::to_string(i) + '\n';
    finish(nested, "x");
}

}  // namespace
}  // namespace bouncecheck
