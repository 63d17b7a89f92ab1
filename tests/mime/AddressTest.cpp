#include "mime/MailText.h"

namespace bouncecheck {
namespace {

TEST(Address, ReadsFromAsAPersonWould) {
    // The address, a bar, the display name.
    const Case cases[] = {
        {"", "|"},
        {"Ann\n Bee\n\t<a@b.ex>", "a@b.ex|Ann Bee"},
        {"\"Bee, Ann <x@y>\" <a@b.ex>", "a@b.ex|Bee, Ann <x@y>"},
        {"\"The \\\"Boss\\\"\" <a@b.ex>", "a@b.ex|The \"Boss\""},
        {"=?utf-8?Q?Bee=2C_J=C3=B6_=3Cx=40y=3E?= <a@b.ex>", "a@b.ex|Bee, J\u00F6 <x@y>"},
        {"\"=?utf-8?Q?J=C3=B6?=\" <a@b.ex>", "a@b.ex|J\u00F6"},
        {"Mail Delivery System", "|Mail Delivery System"},
        {"a@b.ex (Ann Bee)", "a@b.ex|Ann Bee"},
        {"(x, y@z) Ann (the <x>) Bee <a@b.ex>", "a@b.ex|Ann Bee"},
        {"<a@(here)b.ex (c)>", "a@b.ex|"},
        {"Ann Bee a@b.ex", "a@b.ex|Ann Bee"},
        {"\"a b,<\"@c.ex", "\"a b,<\"@c.ex|"},
        {"Ann <\"a@x\"@b.ex>", "\"a@x\"@b.ex|Ann"},
        {"<<@r.ex,@s.ex:a . b @ c.ex >>", "a.b@c.ex|"},
        {"Ann <a@b.ex", "a@b.ex|Ann"},
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
    for (const int kind : {-1, 0, 1, 2, 3, 4}) {
        all += kind > -1 ? "/" : "";
        for (const int index : {-1, 0, 1, 2, 3, 4, 100}) all += recipientOf(mail, kind, index);
    }
    EXPECT_EQ(all, "//a@xb@xc@xd@x/e@x/g@xh@x/");
}

}  // namespace
}  // namespace bouncecheck
