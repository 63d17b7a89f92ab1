#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "tool/ToolRun.h"
#include "tool/output/JsonWriter.h"
#include "tool/output/TerminalText.h"

namespace bouncecheck {
namespace {

const std::string report =
    "From: \"Mailer, MTA\" <mta@x.example>\nSubject: Undelivered: \"a\tb\"\nDate: today\n"
    "Message-ID: <0@x>\nX-Failed-Recipients: f@x\nContent-Type: multipart/report; boundary=b\n\n"
    "--b\n\nSorry, the\x01 end.\n--b\nContent-Type: message/delivery-status\n\n"
    "Reporting-MTA: dns;mx.example\n\nFinal-Recipient: rfc822;later@Y.example\nAction: delayed\n\n"
    "Original-Recipient: rfc822;Old@X.Example\nFinal-Recipient: rfc822;new@z.example\n"
    "Action: failed\nStatus: 5.1.1\nDiagnostic-Code: smtp; 550 \"no\", sir\n\n"
    "Final-Recipient: rfc822;two@x.example\nAction: failed\n\n"
    "--b\nContent-Type: text/rfc822-headers\n\nMessage-ID: <1@x>\nTo: you\nList-Id: <l>\n\n--b--\n";

const std::string away = "From: Me@Home.Example\nX-Autoreply: yes\n\nAway.\n";

class OutputTest : public Tool {
protected:
    std::string shown(std::vector<std::string> arguments, const Terminal& terminal = {}) {
        arguments.push_back(path());
        const ToolRun result = run(arguments, terminal);
        EXPECT_EQ(result.err, "");
        return result.out;
    }
};

TEST_F(OutputTest, ReadsEveryField) {
    write("m", report);
    const Json all = run({"--format", "json", "--fields",
                          "source,index,location,size,type,name,label,address,phrase,subject,from,"
                          "date,message-id,original-recipient,final-recipient,action,status,"
                          "diagnostic,remote-mta,recipients,failed-recipients,reporting-mta,"
                          "feedback-type,returned-message-id,returned-to,returned-subject,"
                          "returned-date,list-id,data",
                          path("m")})
                         .lines()
                         .at(0);
    Json expected = Json::parse(R"({"index":1,"type":7,"name":"transient","label":"7.6a",
        "address":"Old@X.Example","phrase":"","subject":"Undelivered: \"a\tb\"",
        "from":"\"Mailer, MTA\" <mta@x.example>","date":"today","message-id":"<0@x>",
        "original-recipient":"Old@X.Example","final-recipient":"new@z.example","action":"failed",
        "status":"5.1.1","diagnostic":"smtp; 550 \"no\", sir","remote-mta":"",
        "recipients":"later@Y.example new@z.example two@x.example","failed-recipients":"f@x",
        "reporting-mta":"mx.example","feedback-type":"","returned-message-id":"<1@x>",
        "returned-to":"you","returned-subject":"","returned-date":"","list-id":"<l>"})");
    expected["source"] = expected["location"] = path("m");
    expected["size"] = report.size();
    expected["data"] = all["data"];
    EXPECT_NE(std::string(all["data"]).find("Action: delayed"), std::string::npos);
    EXPECT_EQ(all, expected);
}

TEST_F(OutputTest, GivesJsonAllThatAReportStates) {
    write("m", report);
    const Json line = Json::parse(shown({"--format", "json"}));
    EXPECT_EQ(line["recipients"].size(), 3U);
    EXPECT_EQ(line["recipients"][1], Json::parse(R"({"original_recipient":"Old@X.Example",
                              "final_recipient":"new@z.example","action":"failed",
                              "status":"5.1.1","diagnostic_code":"smtp; 550 \"no\", sir"})"));
    EXPECT_EQ(line["report"],
              Json::parse(R"({"reporting_mta":"mx.example","failed_recipients":["f@x"]})"));
    EXPECT_EQ(line["returned"],
              Json::parse(R"({"message_id":"<1@x>","to":"you","list_id":"<l>"})"));
}

TEST(JsonWriter, WritesAnyBytesAsAnotherParserReadsThem) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string value = {'a', static_cast<char>(byte), 'z'};
        JsonWriter json;
        json.string(value);
        const bool isText = byte < 128;
        EXPECT_EQ(Json::parse(json.text()), isText ? value : "a\xEF\xBF\xBDz") << byte;
    }
}

TEST_F(OutputTest, NamesEachMemberOnce) {
    const std::string file = write("x", failedReport);
    const std::string line =
        run({"--format", "json", "--data", "--fields", "name,data,name", file}).out;
    EXPECT_EQ(line, "{\"name\":\"hard\",\"data\":" +
                        Json("Final-Recipient: rfc822;a@x.example\r\nAction: failed").dump() +
                        "}\n");
}

TEST_F(OutputTest, WritesCsvAndTsv) {
    write("m", report);
    EXPECT_EQ(shown({"--format", "csv", "--fields", "name,subject,diagnostic"}),
              "name,subject,diagnostic\r\ntransient,\"Undelivered: \"\"a\tb\"\"\","
              "\"smtp; 550 \"\"no\"\", sir\"\r\n");
    write("m", "S: \x1b\n\na\\b\tc\x01\xff\r\nd\n");
    EXPECT_EQ(shown({"--format", "tsv", "--fields", "name,data"}),
              "name\tdata\nnone\ta\\\\b\\tc\\x01\xEF\xBF\xBD\\r\\nd\\r\\n\n");
    EXPECT_EQ(shown({"--format", "csv", "--data"}).substr(0, 44),
              "source,index,type,name,label,address,data\r\n" + path().substr(0, 1));
    EXPECT_TRUE(shown({"--format", "csv", "--data"})
                    .ends_with("\"a\\b\tc\xEF\xBF\xBD\xEF\xBF\xBD\r\nd\r\n\"\r\n"));
}

TEST_F(OutputTest, ShowsTheVerdictsThatAreWanted) {
    write("1", failedReport);
    write("2", away);
    write("3", "S: x\n\n");
    const auto names = [&](const std::string& option, const std::string& types) {
        std::istringstream lines(shown({"--format", "tsv", "--fields", "name", option, types}));
        std::string all;
        for (std::string name; std::getline(lines, name);) all += name + ' ';
        return all.substr(5);
    };
    EXPECT_EQ(names("--only", "hard"), "hard ");
    EXPECT_EQ(names("--only", "0, auto-reply"), "auto-reply none ");
    EXPECT_EQ(names("--not", "1,6"), "none ");
}

TEST_F(OutputTest, ListsAddresses) {
    write("1", report);
    write("2", away);
    write("3", failedReport);
    write("4", failedReport);
    EXPECT_EQ(shown({"--addresses"}), "Old@x.example\na@x.example\ntwo@x.example\n");
    EXPECT_EQ(shown({"--addresses", "--only", "hard"}), "a@x.example\n");
    EXPECT_EQ(shown({"--addresses", "--only", "auto-reply"}), "Me@home.example\n");
    fs::remove(path("4"));
    for (const auto& [found, listed] :
         {std::pair("a@x.ex\x01, <b@x>; c", ""), {"b@X.example>,", "b@x.example\n"}}) {
        std::string odd = failedReport;
        write("3", odd.replace(odd.find("a@x.example"), 11, found));
        EXPECT_EQ(shown({"--addresses", "--only", "hard"}), listed);
    }
}

TEST_F(OutputTest, Summarizes) {
    for (const char* name : {"1", "2", "3"}) write(name, failedReport);
    std::string odd = failedReport;
    write("3", odd.replace(odd.find("\nAction"), 0, ","));
    write("4", away);
    const Json summary = Json::parse(shown({"--summary", "--format", "json"}));
    EXPECT_EQ(summary["messages"], 4);
    EXPECT_EQ(summary["verdicts"][0],
              Json::parse(R"({"type":1,"name":"hard","count":3,"share":0.75})"));
    EXPECT_EQ(summary["labels"][0], Json::parse(R"({"label":"1.mri","count":3})"));
    EXPECT_EQ(summary["domains"][0], Json::parse(R"({"domain":"x.example","count":3})"));
    EXPECT_EQ(summary["domains"][1], Json::parse(R"({"domain":"home.example","count":1})"));
    const std::string text = shown({"--summary"});
    EXPECT_TRUE(text.starts_with("   COUNT   SHARE  VERDICT\n       3   75.0%  hard\n")) << text;
    EXPECT_NE(text.find("       4  100.0%  messages\n"), std::string::npos) << text;
    EXPECT_EQ(Json::parse(run({"--summary", "--format", "json", path("none")}).out)["messages"], 0);
}

TEST_F(OutputTest, FitsATerminal) {
    write("a-folder-with-a-rather-long-name/" + std::string(80, 'n') + ".eml", failedReport);
    for (const std::size_t width : {40U, 80U, 200U}) {
        std::istringstream lines(shown({"--color", "never"}, {.isOut = true, .width = width}));
        std::string line;
        while (std::getline(lines, line)) EXPECT_LE(columns(line), width) << line;
    }
    EXPECT_NE(shown({}).find(std::string(80, 'n') + ".eml\n"), std::string::npos);
}

TEST_F(OutputTest, PaintsInTerminalsOnly) {
    write("1", failedReport);
    const Terminal terminal = {.isOut = true};
    const auto isPainted = [](const std::string& text) {
        return text.find("\x1b[31mhard") != std::string::npos;
    };
    ::unsetenv("NO_COLOR");
    ::setenv("TERM", "xterm", 1);
    EXPECT_TRUE(isPainted(shown({}, terminal)));
    EXPECT_FALSE(isPainted(shown({})));
    EXPECT_TRUE(isPainted(shown({"--color", "always"})));
    EXPECT_FALSE(isPainted(shown({"--color", "never"}, terminal)));
    ::setenv("NO_COLOR", "1", 1);
    EXPECT_FALSE(isPainted(shown({}, terminal)));
    EXPECT_TRUE(isPainted(shown({"--color", "always"}, terminal)));
    ::unsetenv("NO_COLOR");
}

TEST_F(OutputTest, ExplainsAVerdict) {
    write("1",
          "From: MAILER-DAEMON@x.example\nSubject: Mail delivery failed: x\n\nHello.\n"
          "The following address(es) failed:\n\n"
          "    a@x.example over \x1b[2J quota: mailbox is full\nbye\n");
    const std::string text = shown({"--explain"});
    for (const char* part : {
             "Verdict      soft (2): ",
             "Rule         2.",
             "Phrase       ailbox is full\n",
             "Do           Keep the address",
             "<== decides\n",
             "    | The following address(es) failed:\n",
             "    |     a@x.example over \\x1B[2J quota: mailbox is full\n",
             "    |     ^^^^^^^^^^^                      ^^^^^^^^^^^^^^\n",
         }) {
        EXPECT_NE(text.find(part), std::string::npos) << part << "in\n" << text;
    }
    EXPECT_NE(shown({"--explain", "--color", "always"}).find("m\x1b[1;7mailbox is full\x1b[0m\n"),
              std::string::npos);
    write("2", report);
    EXPECT_NE(
        shown({"--explain"}).find("\n  Failed       f@x\n  Recipient    later@Y.example, del"),
        std::string::npos);
    std::istringstream lines(
        shown({"--explain", "--color", "never"}, {.isOut = true, .width = 60}));
    for (std::string line; std::getline(lines, line);) EXPECT_LE(columns(line), 60U) << line;
}

TEST_F(OutputTest, ExitsWithTheType) {
    const std::string bounce = write("1", failedReport);
    const std::string letter = write("2", "S: x\n\n");
    const std::string empty = write("3", "");
    EXPECT_EQ(run({"--exit-type", bounce}).status, 101);
    EXPECT_EQ(run({"--exit-type", letter}).status, 100);
    EXPECT_EQ(run({"--exit-type", "--only", "hard", letter}).status, 100);
    for (const auto& paths : {std::vector{bounce, letter}, {empty}, {bounce, path("none")}}) {
        std::vector<std::string> arguments = {"--exit-type"};
        arguments.insert(arguments.end(), paths.begin(), paths.end());
        EXPECT_EQ(run(arguments).status, EXIT_SOME_UNREADABLE);
    }
}

TEST_F(OutputTest, IsTheSameHoweverMessagesAreStored) {
    std::string mailbox;
    std::size_t count = 0;
    fs::create_directories(folder_ / "m/new");
    std::vector<fs::path> samples(fs::directory_iterator(SAMPLES_DIR), {});
    std::ranges::sort(samples);
    for (const fs::path& sample : samples) {
        std::string text = contentOf(sample);
        write("m/cur/" + sample.filename().string(), text);
        if (!text.ends_with('\n')) text += '\n';
        mailbox += "From x Thu Sep 18 17:54:04 2008\n";
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            const std::size_t quotes = line.find_first_not_of('>');
            const bool isFrom =
                quotes != std::string::npos && line.compare(quotes, 5, "From ") == 0;
            mailbox.append(isFrom ? ">" : "").append(line).append("\n");
        }
        mailbox += '\n';
        ++count;
    }
    write("mbox", mailbox);
    const auto verdicts = [](const std::string& source, const std::string& jobs) {
        return run({"--format", "tsv", "--fields", "type,label,address", "-j", jobs, source}).out;
    };
    const std::string expected = verdicts(SAMPLES_DIR, "1");
    EXPECT_EQ(std::ranges::count(expected, '\n'), static_cast<std::ptrdiff_t>(count + 1));
    EXPECT_EQ(verdicts(SAMPLES_DIR, "3"), expected);
    EXPECT_EQ(verdicts(path("m"), "2"), expected);
    EXPECT_EQ(verdicts(path("mbox"), "2"), expected);
}

}  // namespace
}  // namespace bouncecheck
