#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "tool/ToolRun.h"

namespace bouncecheck {
namespace {

/// Three recipients of one message: gone, full, and reached.
const std::string message =
    "To: bounces+v=x.example@lists.example\nContent-Type: multipart/report; boundary=b\n\n--b\n"
    "Content-Type: message/delivery-status\n\n"
    "Final-Recipient: rfc822;gone@x.example\nAction: failed\n"
    "Diagnostic-Code: smtp; 550 5.1.1 User unknown\n\n"
    "Final-Recipient: rfc822;full@x.example\nAction: failed\nStatus: 5.2.2\n\n"
    "Final-Recipient: rfc822;here@x.example\nAction: delivered\n\n--b--\n";
const std::string letter = "From: c@x.example\nSubject: hello\n\nSee you.\n";

class RecipientOptions : public Tool {
protected:
    RecipientOptions() {
        write("m", message);
        write("letter", letter);
    }
    /// The recipients of all rows, one after the other.
    std::string rows(std::vector<std::string> options) {
        options.insert(options.end(), {"--format", "tsv", "--fields", "recipient", path()});
        const ToolRun result = run(options);
        EXPECT_EQ(result.status, EXIT_ALL_CLASSIFIED);
        std::string out = result.out.substr(result.out.find('\n') + 1);
        std::ranges::replace(out, '\n', ' ');
        return out;
    }
};

TEST_F(RecipientOptions, ChooseRecipients) {
    using Options = std::vector<std::string>;
    const std::pair<Options, const char*> cases[] = {
        {{"--by", "recipient"}, "gone@x.example full@x.example here@x.example "},
        {{"--by", "recipient", "--advice", "suppress"}, "gone@x.example "},
        {{"--by", "recipient", "--advice", "Retry, suppress"}, "gone@x.example full@x.example "},
        {{"--by", "recipient", "--advice", "none"}, "here@x.example "},
        {{"--by", "recipient", "--reason", "mailbox-full"}, "full@x.example "},
        {{"--by", "recipient", "--reason", "mailbox-full", "--advice", "suppress"}, ""},
        // a message is shown whole
        {{"--reason", "mailbox-full", "--by", "message"}, "gone@x.example "},
        {{"--advice", "unsubscribe"}, ""},
    };
    for (const auto& [options, expected] : cases) EXPECT_EQ(rows(options), expected);
}

TEST_F(RecipientOptions, TakeFormsOfAddresses) {
    const std::string form = "bounces+{local}={domain}@lists.example";
    EXPECT_EQ(rows({"--by", "recipient", "--verp", form}), "v@x.example ");
    // Each takes one form, so that a path may follow.
    EXPECT_EQ(rows({"--by", "recipient", "--verp", "x-{tag}@y", "--verp", form, path("m")}),
              "v@x.example v@x.example ");
}

TEST_F(RecipientOptions, AreRefusedInOneLine) {
    const std::pair<std::vector<std::string>, const char*> mistakes[] = {
        {{"--reason", "x"}, "no reason is named \"x\"; choose from: unknown-mailbox"},
        {{"--reason", "content,"}, "no reason is named \"\""},
        {{"--reason", "suppress"}, "no reason is named"},
        {{"--advice", "content"}, "choose from: none, suppress"},
        {{"--by", "address"}, "choose from: message, recipient"},
        {{"--suppress", "--advice", "fix"}, "--suppress is for"},
        {{"--by", "recipient", "--format", "json"}, "--by recipient"},
        {{"--by", "recipient", "--suppress"}, "--by recipient"},
        {{"--suppress", "--summary"}, "exclude each other"},
        {{"--suppress", "--addresses"}, "exclude each other"},
        {{"--suppress", "--explain"}, "exclude each other"},
        {{"--suppress", "--fields", "name"}, "lists of messages"},
        {{"--verp", "bounces@x.example"}, "\"bounces@x.example\" is no form"},
        {{"--verp", "{local}{domain}@x"}, "is no form"},
        {{"--verp"}, "--verp"},
    };
    for (const auto& [arguments, problem] : mistakes) expectRefused(arguments, problem);
}

}  // namespace
}  // namespace bouncecheck
