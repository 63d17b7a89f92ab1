#include <array>
#include <cstdio>
#include <string>
#include <string_view>

#include "tool/ToolRun.h"

namespace bouncecheck {
namespace {

const std::string hostile =
    "From: \"<img src=x>\" <mailer-daemon@x.example>\n"
    "Subject: </script><script>alert(1)</script><!-- \xff \" \\ \x01\n"
    "Date: Thu, 18 Sep 2008 17:54:04 +0000\n"
    "Content-Type: multipart/report; boundary=b\n\n"
    "--b\n\nSorry.\n--b\nContent-Type: message/delivery-status\n\n"
    "Reporting-MTA: dns; mx.x.example\n\nX-1: <b>\nX-2: 2\nFinal-Recipient: rfc822;A@x.example\n"
    "Action: failed\nX-5: 5\nX-6: 6\nX-7: 7\nX-8: 8\nDiagnostic-Code: smtp; mailbox is full\n\n"
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

    /// What stands in the elements that begin with `tag`.
    static std::vector<std::string> contentsOf(const std::string& html, const std::string& tag,
                                               const std::string& endTag) {
        std::vector<std::string> all;
        for (std::size_t at = html.find(tag); at != std::string::npos; at = html.find(tag, at)) {
            at += tag.size();
            all.push_back(html.substr(at, html.find(endTag, at) - at));
        }
        return all;
    }

    static std::vector<Json> blocks(const std::string& html, const std::string& name) {
        std::vector<Json> all;
        const std::string tag = "<script type=\"application/json\" class=\"" + name + "\">";
        for (const std::string& json : contentsOf(html, tag, "</script>")) {
            all.push_back(Json::parse(json));
        }
        return all;
    }

    /// The first cell of a column.
    static std::string cell(const Json& rows, const char* column) {
        return rows["texts"][rows[column][0].get<std::size_t>()];
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

TEST_F(HtmlOutputTest, TellsWhatAMessageUnfoldsTo) {
    write("in/1", hostile);
    const Json details = blocks(page(), "details").at(0);
    const Json& message = details["messages"][0];
    const auto text = [&](const Json& number) -> std::string {
        return details["texts"][number.get<std::size_t>()];
    };
    std::string excerpt;
    for (const Json& line : message["excerpt"]) {
        for (std::size_t i = 0; i < line.size(); ++i) {
            excerpt += i % 2 == 1 ? "[" + text(line[i]) + "]" : text(line[i]);
        }
        excerpt += line.empty() ? "...\n" : "\n";
    }
    EXPECT_EQ(excerpt.substr(excerpt.find("X-1")),
              "X-1: <b>\nX-2: 2\nFinal-Recipient: rfc822;[A@x.example]\nAction: failed\nX-5: 5\n"
              "...\nX-7: 7\nX-8: 8\nDiagnostic-Code: smtp; m[ailbox is full]\n");

    const Json& shape = details["shapes"][message["shape"].get<std::size_t>()];
    const auto deciding = shape[0].get<std::size_t>();
    EXPECT_EQ(text(shape[1 + deciding].get<std::size_t>() / 4), "Bounce type 2.4");
    EXPECT_EQ(text(message["reportedBy"]), "mx.x.example");
    EXPECT_EQ(text(message["recipients"][0][4]), "smtp; mailbox is full");
    EXPECT_EQ(text(message["returned"][0][1]), "<1@</script>>");
}

/// The lower-case hexadecimal digits that Base64 stands for.
std::string hexOfBase64(std::string_view base64) {
    constexpr std::string_view alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bits;
    for (const char c : base64.substr(0, base64.find('='))) {
        for (int bit = 5; bit >= 0; --bit) bits += alphabet.find(c) >> bit & 1 ? '1' : '0';
    }
    std::string hex;
    for (std::size_t at = 0; at + 4 <= bits.size(); at += 4) {
        hex += "0123456789abcdef"[std::stoul(bits.substr(at, 4), nullptr, 2)];
    }
    return hex.substr(0, 64);
}

TEST_F(HtmlOutputTest, AllowsItsOwnScriptAndStyleOnly) {
    write("in/1", hostile);
    const std::string html = page();
    const std::string policy =
        contentsOf(html, "<meta http-equiv=\"Content-Security-Policy\" content=\"", "\"").at(0);
    EXPECT_TRUE(policy.starts_with("default-src 'none'; script-src 'sha256-")) << policy;
    EXPECT_EQ(policy.find("unsafe"), std::string::npos);
    for (const std::array<std::string, 3>& part :
         {std::array<std::string, 3>{"script-src", "<script type=\"module\">", "</script>"},
          std::array<std::string, 3>{"style-src", "<style>", "</style>"}}) {
        const std::string file = write("part", contentsOf(html, part[1], part[2]).at(0));
        std::array<char, 65> sum = {};
        FILE* pipe = ::popen(("sha256sum " + file).c_str(), "r");
        ASSERT_NE(std::fgets(sum.data(), sum.size(), pipe), nullptr);
        ::pclose(pipe);
        const std::string hash = contentsOf(policy, part[0] + " 'sha256-", "'").at(0);
        EXPECT_EQ(hexOfBase64(hash), sum.data()) << part[0];
    }
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
    EXPECT_LT(page().size(), without + 20'000);
}

}  // namespace
}  // namespace bouncecheck
