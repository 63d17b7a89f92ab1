#include <gtest/gtest.h>

#include <string>

#include "support/Notices.h"

namespace bouncecheck {
namespace {

TEST(RemovalRequest, IsToUnsubscribeWhoAsksForIt) {
    const auto letter = [](const std::string& fields) {
        return advised("From: Ann <ann@x.example>\n" + fields + "\n\nBye.\n");
    };
    for (const char* fields : {"Subject: unsubscribe", "Subject: =?utf-8?q?D=C3=A9sabonnement?=",
                               "Subject: UNSUBSCRIBE 7f3a", "To: leave-77@own.example",
                               "To: news-unsubscribe@own.example", "X-Apple-Unsubscribe: true"}) {
        EXPECT_EQ(letter(fields), "ann@x.example  unsubscribe") << fields;
    }
    for (const char* fields :
         {"Subject: how do I unsubscribe?", "Subject: Re: unsubscribe", "To: leaves@own.example",
          "To: ann.unsubscriber@own.example", "To: leave@own.example", "Subject: Remove watermark",
          "Subject: Baja California", "Subject: unsubscribe\nAuto-Submitted: auto-replied",
          "To: leave-77@own.example\nReturn-Path: <>"}) {
        EXPECT_EQ(letter(fields), "") << fields;
    }
}

}  // namespace
}  // namespace bouncecheck
