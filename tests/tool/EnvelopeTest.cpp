#include "tool/sources/Envelope.h"

#include <gtest/gtest.h>

#include <string>

namespace bouncecheck {
namespace {

TEST(Envelope, IsWhatMailersWrite) {
    for (const char* line : {
             "From MAILER-DAEMON Thu Sep 18 17:54:04 2008",
             "From - Thu Sep  8 7:54:04 2008",
             "From ???@??? Thu Sep 18 17:54:04 2008",
             "From a@x.example  Thu, 18 Sep 2008 17:54:04 +0900 (JST)",
             "From \"a b\"@x.example Thu Sep 18 17:54:04 MET DST 2008",
             "From a at x.example Thu Sep 18 17:54 2008",
             "From 1632@xxx Sat Feb 09 10:00:00 +0000 2019",
             "From a@x.example 2008-09-18 17:54:04",
             "From  Thu Sep 18 17:54:04 2008 ",
         }) {
        EXPECT_TRUE(isEnvelope(line)) << line;
    }
}

TEST(Envelope, IsNoSentence) {
    for (const char* line : {
             "From ",
             "From",
             ">From a Thu Sep 18 17:54:04 2008",
             "from a Thu Sep 18 17:54:04 2008",
             "From: a Thu Sep 18 17:54:04 2008",
             "From Thursday on we are away",
             "From 10:30 to 12:00 in May 2019 we are away",
             "From May 2019 on",
             "From 10:30 2019",
             "From a@x.example",
             "From Thu Sep 18 17:54:04 2008, we think",
         }) {
        EXPECT_FALSE(isEnvelope(line)) << line;
    }
    const std::string date = " Thu Sep 18 17:54:04 2008";
    EXPECT_FALSE(isEnvelope("From " + std::string(longestEnvelope, 'a') + date));
}

}  // namespace
}  // namespace bouncecheck
