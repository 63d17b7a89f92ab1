#include "mime/MailText.h"

namespace bouncecheck {
namespace {

Text part(const Text& type, const Text& text) {
    return "--b\nContent-Type: " + type + "\n\n" + text + '\n';
}

Text report(const Text& parts) {
    return "Content-Type: multipart/report; boundary=b\n\n" + parts + "--b--\n";
}

TEST(ReportPart, FindsFields) {
    const Text status = "Message/Delivery-Status; x=y", encoded = "\nContent-Transfer-Encoding: ";
    const Text complaint = part("message/feedback-report", "X: complaint\nFeedback-Type: abuse");
    const Case cases[] = {
        {part(status, "Y: 1\n\nx \t: \t failed \t"), "failed"},
        {part(status, "X: smtp;\n\t 550\n  no such user"), "smtp; 550 no such user"},
        {part(status, "Y: 1\nX:\n\nX: delayed"), ""},
        {part(status, "\n\nY: 1\nnot a field\n\n\n\nX: failed"), "failed"},
        {part(status + encoded + "base64", "WTogMQoKWDogZmFp\nbGVk"), "failed"},
        {part("multipart/x; boundary=c", "--c\nContent-Type: " + status + "\n\nX: 1\n--c--"), "1"},
        {complaint + part(status, "X: one") + part(status, "X: two"), "one"},
        {complaint + part(status, "Y: failed"), ""},
        {part("message/disposition-notification", "X: read") + complaint, "read"},
        {part("message/global-delivery-status", "X: failed"), "failed"},
    };
    expectEach(cases, [](Text parts) { return fieldOf(Email2(report(parts)), "X"); });
}

TEST(ReportPart, HandsOutItsWholeText) {
    const Text wire = "X: 1\r\n\r\nX:\r\n failed\r\n", type = "message/delivery-status";
    const Email2 mail(report(part(type, "X: 1\n\nX:\n failed\n")));
    EXPECT_EQ(statusOf(mail) + rawBodyOf(*mail.findContentType(type.c_str())), wire + wire);
    const Email2 complaint(report(part("message/feedback-report", "X: 1")));
    EXPECT_EQ(statusOf(complaint), "X: 1");
    EXPECT_FALSE(complaint.findContentType(type.c_str()));
}

TEST(ReportPart, HandsOutAttachedMessages) {
    const Text nested = "--c\nContent-Type: message/RFC822\n\nTo: \"A\" <a@b>\n\n1\n--c--";
    const Text last = part("message/rfc822\nContent-Transfer-Encoding: base64", "VG86IGJAYg==");
    const Text text = part("x/y", "To: x@y") + part("multipart/x; boundary=c", nested) + last;
    auto mail = std::make_unique<Email2>(report(text));
    EXPECT_FALSE(attachedTo(*mail, -1));
    EXPECT_FALSE(attachedTo(*mail, 2));
    EXPECT_FALSE(attachedTo(Email2()));
    const auto first = attachedTo(*mail), second = attachedTo(*mail, 1);
    mail.reset();
    ASSERT_TRUE(first && second);
    EXPECT_EQ(recipientOf(*first) + bodyOf(*first) + recipientOf(*second), "a@b1b@b");
}

TEST(SystemCerts, CanBeAbsent) {
    const auto store = [] { return SystemCertsHolder().getSystemCertsPtr(); };
    EXPECT_TRUE(store());
    const SystemCertsHolder::Absence absence;
    EXPECT_FALSE(store());
}

}  // namespace
}  // namespace bouncecheck
