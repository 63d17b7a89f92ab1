#include <string>

#include "tool/PageParts.h"

namespace bouncecheck {
namespace {

const std::string hostile = "</script><script>alert(1)</script><!-- \xff \" \\ \x01";

std::string bounceOf(const std::string& address, const std::string& words) {
    return "From x Thu Sep 18 17:54:04 2008\nSubject: x\nMessage-ID: <" + address +
           ">\nDate: Thu, 18 Sep 2008 17:54:04 +0000\n"
           "Content-Type: multipart/report; boundary=b\n\n--b\n\nSorry.\n--b\n"
           "Content-Type: message/delivery-status\n\nReporting-MTA: dns; mx.x.example\n\n"
           "Final-Recipient: rfc822;" +
           address + "\nAction: failed\nStatus: 5.1.1\nDiagnostic-Code: smtp; 550 5.1.1 " + words +
           "\n\n--b--\n\n";
}

class LedgerPageTest : public Tool {
protected:
    /// The page of the ledger in the test's folder, after a scan of `mailbox`.
    std::string page(const std::string& mailbox, std::vector<std::string> arguments = {}) {
        const std::string file = path("page.html");
        run({"scan", "--ledger", path("ledger"), write("mbox", mailbox)});
        arguments.insert(arguments.begin(), {"list", "--ledger", path("ledger"), "--html", file});
        const ToolRun listed = run(arguments);
        EXPECT_EQ(listed.status, 0) << listed.err;
        EXPECT_EQ(listed.out, "");
        return contentOf(file);
    }
};

TEST_F(LedgerPageTest, KeepsTextFromMailInsideItsBlocks) {
    const std::string html = page(bounceOf("Ann@x.example", "unknown user " + hostile));
    EXPECT_EQ(html.find("alert(1)<"), std::string::npos);
    EXPECT_EQ(html.find("<!--"), std::string::npos);
    // help, development, rows, details, the script
    EXPECT_EQ(contentsOf(html, "<script", ">").size(), 5U);
    const Json rows = blocks(html, "rows").at(0);
    EXPECT_EQ(cell(rows, "address"), "Ann@x.example");
    EXPECT_EQ(cell(rows, "cause"), "suppress");
    EXPECT_EQ(cell(rows, "reason"), "unknown-mailbox");
    EXPECT_EQ(rows["since"], Json::parse("[1221760444]"));
    EXPECT_EQ(rows["count"], Json::parse("[1]"));
    const Json details = blocks(html, "details").at(0);
    const auto detail = [&](std::size_t at) {
        return details["texts"][details["rows"][0][at].get<std::size_t>()].get<std::string>();
    };
    EXPECT_EQ(detail(0), "failed");
    EXPECT_EQ(detail(1), "5.1.1");
    EXPECT_TRUE(detail(3).starts_with("550 5.1.1 unknown user </script><script>")) << detail(3);
    EXPECT_EQ(detail(4), path("mbox") + ":1");
    EXPECT_EQ(detail(5), "<Ann@x.example>");
    const Json help = blocks(html, "help").at(0);
    EXPECT_TRUE(help["reasons"].contains("unknown-mailbox"));
    const Json development = blocks(html, "development").at(0);
    EXPECT_EQ(development["reportDay"], Json::parse("[14140]"));
    EXPECT_EQ(development["changeDay"], Json::parse("[14140]"));
    EXPECT_EQ(development["begun"], Json::parse("[1]"));
    const std::string policy =
        contentsOf(html, "<meta http-equiv=\"Content-Security-Policy\" content=\"", "\"").at(0);
    EXPECT_TRUE(policy.starts_with("default-src 'none'; script-src 'sha256-")) << policy;
    EXPECT_EQ(policy.find("unsafe"), std::string::npos);
}

TEST_F(LedgerPageTest, HoldsWhatIsAskedFor) {
    std::string mailbox;
    for (int i = 0; i < 4500; ++i) {
        const std::string address = "a" + std::to_string(i) + "@x.example";
        mailbox += bounceOf(address, i % 2 == 0 ? "no such user" : "no such domain");
    }
    const auto count = [](const std::string& html) {
        std::size_t all = 0;
        for (const Json& rows : blocks(html, "rows")) all += rows["address"].size();
        return all;
    };
    const std::string html = page(mailbox);
    EXPECT_EQ(blocks(html, "rows").size(), blocks(html, "details").size());
    EXPECT_GT(blocks(html, "rows").size(), 1U);
    EXPECT_EQ(count(html), 4500U);
    EXPECT_EQ(count(page("", {"--advice", "unsubscribe"})), 0U);
    EXPECT_EQ(count(page("", {"--since", "2008-09-19"})), 0U);
    EXPECT_EQ(count(page("", {"--since", "2008-09-18"})), 4500U);
    // Of an empty ledger, too.
    fs::remove(path("ledger"));
    EXPECT_EQ(blocks(page(""), "development").at(0)["reportDay"], Json::array());
}

TEST_F(LedgerPageTest, ReplacesNoLedgerAndLeavesNoPart) {
    page(bounceOf("a@x.example", "no such user"));
    const std::string ledger = path("ledger");
    const std::string before = contentOf(ledger);
    fs::create_symlink(ledger, path("link"));
    for (const std::string& target : {ledger, path("link")}) {
        EXPECT_EQ(run({"list", "--ledger", ledger, "--html", target}).status, EXIT_WRONG_USAGE);
    }
    EXPECT_EQ(contentOf(ledger), before);
    fs::remove(path("page.html"));
    for (const char* other : {"--changes-since=1d", "--format=json"}) {
        EXPECT_EQ(run({"list", "--ledger", ledger, "--html", path("page.html"), other}).status,
                  EXIT_WRONG_USAGE);
    }
    // Who followed the changes of some would not learn that they ended.
    for (const char* some : {"--advice=retry", "--reason=mailbox-full", "--since=1d"}) {
        EXPECT_EQ(run({"list", "--ledger", ledger, "--changes-since=1d", some}).status,
                  EXIT_WRONG_USAGE);
    }
    EXPECT_EQ(run({"list", "--ledger", ledger, "--html", path("none/page")}).status,
              EXIT_SOME_UNREADABLE);
    EXPECT_EQ(run({"list", "--ledger", ledger, "--html", "/dev/full"}).status,
              EXIT_SOME_UNREADABLE);
    EXPECT_FALSE(fs::exists(path("page.html")));
}

}  // namespace
}  // namespace bouncecheck
