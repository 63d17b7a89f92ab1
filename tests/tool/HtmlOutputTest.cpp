#include <array>
#include <string>

#include "tool/PageParts.h"

namespace bouncecheck {
namespace {

const std::string hostile =
    "From: \"<img src=x>\" <mailer-daemon@x.example>\n"
    "Subject: </script><script>alert(1)</script><!-- \xff \" \\ \x01\n"
    "Date: Thu, 18 Sep 2008 17:54:04 +0000\n"
    "X-Failed-Recipients: f@x.example\nContent-Type: multipart/report; boundary=b\n\n"
    "--b\n\nSorry.\n--b\nContent-Type: message/delivery-status\n\n"
    "Reporting-MTA: dns; mx.x.example\n\nFinal-Recipient: rfc822;A@x.example\n"
    "Action: failed\nDiagnostic-Code: smtp; mailbox is full\n\n"
    "--b\nContent-Type: text/rfc822-headers\n\nMessage-ID: <1@</script>>\n--b--\n";

class HtmlOutputTest : public Tool {
protected:
    /// The page of the messages in the test's folder.
    std::string page(std::vector<std::string> arguments = {}) {
        const std::string file = (folder_ / "page.html").string();
        arguments.insert(arguments.end(), {"--html", file, path("in")});
        run(arguments);
        const std::string html = contentOf(file);
        fs::remove(file);
        return html;
    }
};

TEST_F(HtmlOutputTest, KeepsTextFromMailInsideItsBlocks) {
    write("in/1", hostile);
    const std::string html = page();
    EXPECT_EQ(html.find("alert(1)<"), std::string::npos);
    EXPECT_EQ(html.find("<img"), std::string::npos);
    EXPECT_EQ(html.find("<!--"), std::string::npos);
    EXPECT_EQ(contentsOf(html, "<script", ">").size(), 4U);  // help, rows, details, the script
    const Json rows = blocks(html, "rows").at(0);
    EXPECT_EQ(cell(rows, "subject"), "</script><script>alert(1)</script><!-- \xC3\xBF \" \\ \x01");
    EXPECT_EQ(cell(rows, "address"), "A@x.example");
    EXPECT_EQ(cell(rows, "label"), "2.4");
    EXPECT_EQ(cell(rows, "place"), path("in/1"));
    EXPECT_EQ(rows["date"], Json::parse("[1221760444]"));
}

TEST_F(HtmlOutputTest, HasARowForEachRecipientAndOneWhereThereIsNone) {
    write("in/1", "Subject: a letter\n\nHello.\n");
    std::string report =
        "Content-Type: multipart/report; boundary=b\n\n--b\n\nSorry, A@x.example.\n";
    report += "--b\nContent-Type: message/delivery-status\n\nReporting-MTA: dns; mx.x.example\n\n";
    for (const char* name : {"A", "b"}) {
        report += "Original-Recipient: rfc822;" + std::string(name) + "@x.example\n" +
                  "Final-Recipient: rfc822;" + name + "@y.example\nAction: failed\n" +
                  "Status: 5.2.2\nRemote-MTA: dns; " + name + ".y.example\n" +
                  "Diagnostic-Code: smtp; 552 5.2.2 </b> is full\n\n";
    }
    write("in/2", report + "--b--\n");
    const std::string html = page();
    const Json rows = blocks(html, "rows").at(0);
    EXPECT_EQ(rows["rows"], Json::parse("[1,2]"));
    const struct {
        const char* column;
        std::array<std::string, 3> cells;
    } columns[] = {
        {"recipient", {"", "A@x.example", "b@x.example"}},
        {"final", {"", "A@y.example", "b@y.example"}},
        {"outcome", {"", "failed", "failed"}},
        {"status", {"", "5.2.2", "5.2.2"}},
        {"diagnostic", {"", "552 5.2.2 </b> is full", "552 5.2.2 </b> is full"}},
    };
    for (const auto& [column, cells] : columns) {
        for (std::size_t i = 0; i < cells.size(); ++i) {
            EXPECT_EQ(cell(rows, column, i), cells[i]) << column;
        }
    }
    const Json details = blocks(html, "details").at(0);
    const Json& evidence = details["messages"][1]["recipients"];
    EXPECT_EQ(details["messages"][0]["recipients"], Json::array());
    EXPECT_EQ(details["texts"][evidence[1][2].get<std::size_t>()], "b.y.example");
    // Whatever a row says is explained.
    const Json help = blocks(html, "help").at(0);
    EXPECT_TRUE(help["reasons"].contains(cell(rows, "reason", 1)));
    EXPECT_TRUE(help["advices"].contains(cell(rows, "advice", 1)));
}

TEST_F(HtmlOutputTest, WritesWhatEndsInTheYearTenThousandAsUndated) {
    write("in/1", "Date: 31 Dec 9999 23:59:59 +0000\n\n");
    write("in/2", "Date: 31 Dec 9999 23:59:59 -0001\n\n");
    EXPECT_EQ(blocks(page(), "rows").at(0)["date"], Json::parse("[253402300799,null]"));
}

TEST_F(HtmlOutputTest, AllowsItsOwnScriptAndStyleOnly) {
    write("in/1", hostile);
    const std::string html = page();
    const std::string policy =
        contentsOf(html, "<meta http-equiv=\"Content-Security-Policy\" content=\"", "\"").at(0);
    EXPECT_TRUE(policy.starts_with("default-src 'none'; script-src 'sha256-")) << policy;
    EXPECT_EQ(policy.find("unsafe"), std::string::npos);
    for (const char* address : {"http:", "https:", "src=", "href=", "url(", "@import"}) {
        for (const auto& [tag, end] : {std::pair("<style>", "</style>"), {"<body>", "<script"}}) {
            EXPECT_EQ(contentsOf(html, tag, end).at(0).find(address), std::string::npos) << address;
        }
    }
}

TEST_F(HtmlOutputTest, HoldsWhatIsShown) {
    write("in/1", hostile);
    write("in/2", "Subject: a letter\n\nHello.\n");
    EXPECT_EQ(blocks(page({"--only", "none"}), "rows").at(0)["type"], Json::parse("[0]"));
    EXPECT_EQ(blocks(page({"--max-message-size", "100"}), "rows").at(0)["type"].size(), 1U);
    // More than one block holds, on several threads.
    std::string mailbox;
    for (int i = 0; i < 2500; ++i) mailbox += "From x Thu Sep 18 17:54:04 2008\nS: x\n\n\n";
    write("in/mbox", mailbox);
    std::size_t count = 0;
    for (const Json& rows : blocks(page({"-j", "3"}), "rows")) count += rows["type"].size();
    EXPECT_EQ(count, 2502U);
    EXPECT_EQ(page({"-j", "1"}), page({"-j", "3"}));
}

TEST_F(HtmlOutputTest, StandsBesideTheOutput) {
    const std::string message = write("in/1", hostile);
    const std::string file = path("page.html");
    EXPECT_EQ(run({"--html", file, message}).out, run({"--summary", message}).out);
    for (const std::vector<std::string>& form :
         {std::vector<std::string>{"--format", "table"}, {"--by", "recipient"}}) {
        std::vector<std::string> arguments = form;
        arguments.push_back(message);
        const std::string alone = run(arguments).out;
        arguments.insert(arguments.end(), {"--html", file});
        EXPECT_EQ(run(arguments).out, alone);
    }
    const ToolRun json = run({"--html", file, "--format", "json", message, "-o", path("json")});
    EXPECT_EQ(json.out, "");
    EXPECT_EQ(contentOf(path("json")), run({"--format", "json", message}).out);
    fs::remove(file);
    EXPECT_EQ(run({"--html", file, "-o", file, message}).status, EXIT_WRONG_USAGE);
    EXPECT_EQ(run({"--html", path("none/page"), message}).status, EXIT_SOME_UNREADABLE);
    EXPECT_EQ(run({"--html", "/dev/full", message}).status, EXIT_SOME_UNREADABLE);
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(HtmlOutputTest, BoundsWhatAMessageAdds) {
    std::string huge = "From: a@x.example\nSubject: " + std::string(1 << 20, 's') + "\n";
    huge += "Content-Type: multipart/report; boundary=b\n\n--b\n\n" + std::string(1 << 20, 't');
    huge += "\n--b\nContent-Type: message/delivery-status\n\n";
    for (int i = 0; i < 3000; ++i) {
        huge += "Final-Recipient: rfc822;a" + std::to_string(i) + "@x.example\nAction: failed\n\n";
    }
    write("in/1", "");
    const std::size_t without = page().size();
    write("in/2", huge + "--b--\n");
    constexpr std::size_t bytesOfRow = 120;
    EXPECT_LT(page().size(), without + 20'000 + 3000 * bytesOfRow);
}

}  // namespace
}  // namespace bouncecheck
