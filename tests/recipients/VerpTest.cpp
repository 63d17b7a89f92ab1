#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "support/Notices.h"

namespace bouncecheck {
namespace {

constexpr const char* lists = "bounces+{local}={domain}@lists.example.org";

/// "a@x.example tag" of the match, or "-".
std::string match(const char* pattern, const std::string& address) {
    const auto match = VerpPattern::parse(pattern)->match(address);
    return match ? match->address + " " + match->tag : "-";
}

TEST(Verp, MatchesItsPattern) {
    const std::string cases[][3] = {
        {lists, "bounces+a=x.example@lists.example.org", "a@x.example "},
        {lists, "Bounces+A=b=x.example@Lists.Example.Org", "A=b@x.example "},
        {lists, "bounces+a=x.example@lists.example.com", "-"},
        {lists, "xbounces+a=x.example@lists.example.org", "-"},
        {lists, "bounces+=x.example@lists.example.org", "-"},
        {lists, "bounces+a=@lists.example.org", "-"},
        {lists, "bounces@lists.example.org", "-"},
        {"{domain}/{local}@b.example", "x.example/a/b@b.example", "a/b@x.example "},
        {"{local}-{domain}-return@b.example", "a-b-x.example-return@b.example", "a-b@x.example "},
        {"b-{tag}@x.example", "B-17-x@x.example", " 17-x"},
        {"b-{tag}@x.example", "b-@x.example", "-"},
        {"{tag}@b.example", "a@b.example@b.example", " a@b.example"},
        {"b@{tag}", "b@x.example", " x.example"},
    };
    for (const auto& [pattern, address, expected] : cases) {
        EXPECT_EQ(match(pattern.c_str(), address), expected) << pattern << " " << address;
    }
    for (const char* wrong : {"", "a@x", "{local}@x", "{local}{domain}@x", "{tag}", "a{b}@{tag}",
                              "{tag}={tag}@x", "{local}={domain}={tag}@x", "}{tag}@x"}) {
        EXPECT_FALSE(VerpPattern::parse(wrong)) << wrong;
    }
    VerpPattern pattern = *VerpPattern::parse("b-{tag}@x.example");
    const VerpPattern taken = std::move(pattern);
    // NOLINTNEXTLINE(bugprone-use-after-move): what is left matches nothing
    EXPECT_FALSE(pattern.match("b-17@x.example"));
}

/// The user, the action and the status of a recipient.
using Group = std::array<std::string, 3>;

/// The rest of a report on two recipients, from its media type on.
std::string groups(const Group& first, const Group& second) {
    std::string status;
    for (const auto& [user, action, code] : {first, second}) {
        status += "Final-Recipient: rfc822;" + user + "@x.example\nAction: " + action +
                  "\nStatus: " + code + "\n\n";
    }
    return statusReport(status);
}

TEST(Verp, ReadsTheAddressesThatMailCameBackTo) {
    const std::vector<VerpPattern> patterns = {*VerpPattern::parse(lists),
                                               *VerpPattern::parse("b-{tag}@x.example"),
                                               *VerpPattern::parse("b+{local}={domain}@x.example")};
    const std::string from = "From: MAILER-DAEMON@mx.example\n";
    const std::string toA = from + "To: bounces+a=x.example@lists.example.org\n";
    const std::pair<std::string, const char*> cases[] = {
        {toA, "a@x.example  unknown"},
        {from + "To: o@x.example\nDelivered-To: bounces+a=x.example@lists.example.org\n",
         "a@x.example  unknown"},
        {from + "To: prvs=1234abcdef=bounces+a=x.example@lists.example.org\n",
         "a@x.example  unknown"},
        {from + "To: SRS0=HHH=TT=x.example=b+a=y.example@forward.example\n",
         "a@y.example  unknown"},
        {from + "Content-Type: message/rfc822\n\n"
                "Return-Path: <bounces+a=x.example@lists.example.org>\n",
         "a@x.example  unknown"},
        // what a notice without addresses says is said of it
        {toA + "\nNo such user here.", "a@x.example  failed unknown-mailbox suppress"},
        {toA + "\nDelivery has been delayed.", "a@x.example  delayed expired retry"},
        {from + "To: b-17@x.example\n\nmailbox is full", " 17 failed mailbox-full retry"},
        // the mail was sent on
        {"X-Failed-Recipients: new@x.example\n" + toA, "a@x.example->new@x.example  failed"},
        {toA + "\n<c@x.example>: 550 5.1.1 user unknown\n",
         "a@x.example->c@x.example  failed unknown-mailbox suppress"},
        // to several
        {toA + "\n<c@x.example>: 550 5.1.1 user unknown\n\n<d@x.example>: mailbox full\n",
         "a@x.example->c@x.example  failed unknown-mailbox retry"},
        {toA + groups({"c", "failed", "5.1.1"}, {"d", "failed", "5.1.1"}),
         "a@x.example->c@x.example  failed unknown-mailbox suppress"},
        {toA + groups({"c", "failed", "5.1.1"}, {"d", "failed", "5.2.2"}),
         "a@x.example->c@x.example  failed unknown-mailbox retry"},
        {toA + groups({"d", "delayed", "4.4.1"}, {"c", "failed", "5.1.1"}),
         "a@x.example->c@x.example  failed unknown-mailbox retry"},
        {toA + groups({"a", "failed", "5.1.1"}, {"d", "failed", "5.2.2"}),
         "a@x.example  failed unknown-mailbox suppress"},
        {toA + groups({"a", "failed", "5.1.1"}, {"d", "delivered", "2.0.0"}),
         "a@x.example  failed unknown-mailbox retry"},
        {toA + "\n<d@x.example>: mailbox full\n\n<A@x.example>: 550 5.1.1 user unknown\n",
         "A@x.example  failed unknown-mailbox suppress"},
        {from + "To: b-17@x.example\n\n<c@x.example>: 550 user unknown\n",
         "c@x.example 17 failed unknown-mailbox suppress"},
        // mail of people
        {"From: c@x.example\nTo: bounces+a=x.example@lists.example.org\nSubject: Re: news\n\n"
         "I wrote to d@x.example: 550 user unknown",
         ""},
        {"From: a@x.example\nReturn-Path: <>\nTo: bounces+a=x.example@lists.example.org\n\n"
         "My colleague has left the company.",
         ""},
        {"From: c@x.example\nTo: b-17@x.example\nAuto-Submitted: auto-replied\n\nAway.", ""},
        {from + "To: bounces@lists.example.org\n", ""},
    };
    for (const auto& [message, expected] : cases) {
        const std::string all = joined(recipientsOf(Entity(message + "\n"), patterns),
                                       [](std::string& out, const Recipient& recipient) {
                                           out += " " + recipient.tag + " ";
                                           out += nameOf(recipient.outcome);
                                           if (recipient.reason == Reason::other) return;
                                           out.append(" ").append(nameOf(recipient.reason));
                                           out.append(" ").append(nameOf(recipient.advice));
                                       });
        EXPECT_EQ(all, expected) << message;
    }
}

}  // namespace
}  // namespace bouncecheck
