#include "mime/MailText.h"

namespace bouncecheck {
namespace {

TEST(Address, ReadsFromAsAPersonWould) {
    // The address, a bar, the display name.
    const Case cases[] = {
        {"", "|"},
        {"Ann\n Bee\n\t<a@b.ex>", "a@b.ex|Ann Bee"},
        {"\"Bee, \\\"A\\\" <x@y>\" <a@b.ex>", "a@b.ex|Bee, \"A\" <x@y>"},
        {"=?utf-8?Q?Bee=2C_J=C3=B6_=3Cx=40y=3E?= <a@b.ex>", "a@b.ex|Bee, J\u00F6 <x@y>"},
        {"Mail Delivery System", "|Mail Delivery System"},
        {" MAILER-DAEMON ", "MAILER-DAEMON|"},
        {"\"MAILER-DAEMON\"", "|MAILER-DAEMON"},
        {"=?utf-8?Q?Ann?=", "|Ann"},
        {"Bee,", "|Bee,"},
        {"a@b.ex (Ann Bee)", "a@b.ex|Ann Bee"},
        {"(x, y@z) Ann (the <x>) Bee <a@b.ex>", "a@b.ex|Ann Bee"},
        {"<a@(here)b.ex (c)>", "a@b.ex|"},
        {"Ann Bee a@b.ex", "a@b.ex|Ann Bee"},
        {"\"a b,<\"@c.ex", "\"a b,<\"@c.ex|"},
        {"<<@r.ex,@s.ex:a . b @ c.ex >>", "a.b@c.ex|"},
        {"Ann <a@b.ex", "a@b.ex|Ann"},
        {"Bee, Ann <a@b.ex>, c@d.ex", "a@b.ex|Bee, Ann"},
        {"=?utf-8?Q?Ann_=3Ca=40b.ex=3E?=", "a@b.ex|Ann"},
        {"MAILER-DAEMON <>", "|MAILER-DAEMON"},
        {"MAILER-DAEMON (Mail System)", "MAILER-DAEMON|Mail System"},
        {"undisclosed recipients:;, , T: Ann <a@b.ex>, c@d.ex;", "a@b.ex|Ann"},
    };
    expectEach(cases, [](Text field) {
        const Email2 mail("From: " + field + "\nTo: x@y.ex\n\n");
        return fromOf(mail) + '|' + nameOf(mail);
    });
}

TEST(Address, CountsRecipientsByKind) {
    const Text to = "To: \"A, a\" <a@x>, Team: b@x, C <c@x>;,\n none:;, d@x\n";
    const Email2 mail("From: f@x\n" + to + "Cc: e@x\nBcc: g@x, h@x\n\n");
    Text all;
    for (int i = 0; i < 42; ++i)
        all += recipientOf(mail, i / 7 - 1, i % 7 - 1) + (i % 7 == 6 ? "/" : "");
    EXPECT_EQ(all, "//a@xb@xc@xd@x/e@x/g@xh@x//");
}

}  // namespace
}  // namespace bouncecheck
