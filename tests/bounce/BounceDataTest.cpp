#include <gtest/gtest.h>

#include "support/Classification.h"

namespace bouncecheck {
namespace {

std::string multipart(const char* type, const char* parts) {
    return std::string("Content-Type: multipart/") + type + "; boundary=b\n\n" + parts + "--b--\n";
}

TEST(BounceData, IsBuiltFromTheFirstBodies) {
    struct Case {
        std::string message;
        const char* data;
        const char* tag;  ///< under which the size is logged, or ""
    };
    const Case cases[] = {
        {"\nplain\n", "plain\r\n", ""},
        {multipart("report", "--b\n\none\n--b\n\ntwo\n"), "one\r\ntwo", ""},
        {multipart("report", "--b\n\none\n--b\n\none\n"), "one", ""},
        {multipart("report", "--b\n\none\n--b\n\n\n"), "one", ""},
        {multipart("report",
                   "--b\n\n\n--b\n\n\n--b\nContent-Type: message/delivery-status\n\n"
                   "Action: none\n"),
         "Action: none", "newBounceDataSize2"},
        {multipart("report",
                   "--b\n\none\n--b\nContent-Type: multipart/mixed; boundary=i\n\n--i\n\n"
                   "x\n--i--\n"),
         "one", ""},
        {multipart("mixed", "--b\n\none\n--b\n\ntwo\n"), "one\r\ntwo", "newBounceDataSize1"},
        {multipart("mixed", "--b\n\none\n--b\nContent-Type: text/html\n\ntwo\n"), "one", ""},
        {multipart("mixed", "--b\n\none\n--b\nContent-Type: message/rfc822\n\nTo: x\n"),
         "one\r\nTo: x", "newBounceDataSize1"},
        {multipart("mixed",
                   "--b\n\none\n--b\nContent-Type: message/rfc822\n\n"
                   "content-transfer-encoding: BASE64\n\nSGVsbG8=\n"),
         "oneone", "newBounceDataSize5"},
        {multipart("mixed", "--b\n\n\n--b\nContent-Type: text/html\n\n<p>hi</p>\n"), "",
         "newBounceDataSize3"},
        {multipart("mixed",
                   "--b\nContent-Type: image/x\n\n\n--b\nContent-Type: text/html\n\n"
                   "<p>hi</p>\n"),
         "hi\r\n", "newBounceDataSize3"},
        {multipart("mixed",
                   "--b\nContent-Type: multipart/related; boundary=i\n\n--i\n\nx\n--i--\n"
                   "--b\n\ntwo\n"),
         "", ""},
        {multipart("alternative", "--b\n\none\n--b\n\ntwo\n"), "one", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.message);
        const Classification result = classified(c.message);
        EXPECT_EQ(result.data, c.data);
        for (const char* tag : {"newBounceDataSize1", "newBounceDataSize2", "newBounceDataSize3",
                                "newBounceDataSize5"}) {
            const std::string size = std::to_string(result.data.size());
            EXPECT_EQ(result.values(tag), std::string_view(tag) == c.tag ? size : "") << tag;
        }
    }
}

TEST(BounceData, SubjectLosesTheTagsOfSpamFilters) {
    struct Case {
        const char* raw;
        const char* cleaned;
    };
    const Case cases[] = {
        {"SPAM-LOW: hello ", "hello"},
        {"SPAM >SPAM > hello", "SPAM > hello"},
        {"SPAM >Possible Spam : SPAM-LOW:x", "x"},
        {"spam-low: hello", "spam-low: hello"},
        {"=?utf-8?q?Fr=C3=A5nvaro?=", "Fr\u00e5nvaro"},
    };
    for (const Case& c : cases) {
        const Classification result = classified(std::string("Subject: ") + c.raw + "\n\nx");
        EXPECT_EQ(result.values("subject"), c.cleaned);
    }
}

}  // namespace
}  // namespace bouncecheck
