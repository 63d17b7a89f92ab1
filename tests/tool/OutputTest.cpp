#include <algorithm>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "text/Controls.h"
#include "text/Search.h"
#include "tool/ToolRun.h"
#include "tool/output/Fields.h"
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
    std::string names;
    for (const Field& field : allFields())
        names.append(names.empty() ? "" : ",").append(field.name);
    const Json all = run({"--format", "json", "--fields", names, path("m")}).lines().at(0);
    Json expected = Json::parse(R"({"index":1,"type":7,"name":"transient","label":"7.6a",
        "address":"Old@X.Example","phrase":"","subject":"Undelivered: \"a\tb\"",
        "from":"\"Mailer, MTA\" <mta@x.example>","date":"today","message-id":"<0@x>",
        "about":"Old@X.Example","recipient":"Old@X.Example","final-recipient":"new@z.example","tag":"",
        "outcome":"failed","reason":"unknown-mailbox","advice":"retry","status":"5.1.1",
        "reply-code":"550","diagnostic":"550 \"no\", sir","remote-mta":"","last-attempt":"",
        "will-retry-until":"","found-in":"report","evidence":"5.1.1",
        "recipients":"later@Y.example Old@X.Example two@x.example f@x",
        "reporting-mta":"mx.example","feedback-type":"","returned-message-id":"<1@x>",
        "returned-from":"","returned-to":"you","returned-subject":"","returned-date":"","list-id":"<l>"})");
    expected["source"] = expected["location"] = path("m");
    expected["size"] = report.size();
    expected["data"] = all["data"];
    EXPECT_NE(std::string(all["data"]).find("Action: delayed"), std::string::npos);
    EXPECT_EQ(all, expected);
}

TEST_F(OutputTest, GivesJsonAllThatAReportStates) {
    write("m", report);
    const Json line = Json::parse(shown({"--format", "json"}));
    EXPECT_EQ(line["recipients"].size(), 4U);
    EXPECT_EQ(line["recipients"][1],
              Json::parse(R"({"address":"Old@X.Example","final_address":"new@z.example",
                              "outcome":"failed","reason":"unknown-mailbox","advice":"retry",
                              "status":"5.1.1","reply_code":"550","diagnostic":"550 \"no\", sir",
                              "evidence":{"found_in":"report","reason_from":"status",
                                          "row":"X.1.1"}})"));
    EXPECT_EQ(line["report"], Json::parse(R"({"reporting_mta":"mx.example"})"));
    EXPECT_EQ(line["returned"],
              Json::parse(R"({"message_id":"<1@x>","to":"you","list_id":"<l>"})"));
}

TEST(JsonWriter, WritesAnyBytesAsAnotherParserReadsThem) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string value = {'a', static_cast<char>(byte), 'z'};
        std::ostringstream text;
        JsonWriter json(text);
        json.string(value);
        json.endLine();
        const bool isText = byte < 128;
        EXPECT_EQ(Json::parse(text.str()), isText ? value : "a\xEF\xBF\xBDz") << byte;
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
              "\"550 \"\"no\"\", sir\"\r\n");
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
    EXPECT_EQ(shown({"--addresses"}), "Old@x.example\na@x.example\nf@x\ntwo@x.example\n");
    EXPECT_EQ(shown({"--addresses", "--only", "hard"}), "a@x.example\n");
    EXPECT_EQ(shown({"--addresses", "--only", "auto-reply"}), "Me@home.example\n");
    fs::remove(path("4"));
    for (const auto& [found, listed] : {std::pair("a@x.ex\x01, <b@x>; c", ""),
                                        {"b@X.example>,", "b@x.example\n"},
                                        {"|/usr/bin/x@y.example", ""},
                                        {"\"|x -y\"@y.example", ""},
                                        {"host.example", ""},
                                        {"a b@x.example", ""},
                                        {"a@x..example", ""},
                                        {"a@b@x.example", ""},
                                        {"a@x.example\u202E", ""},
                                        {"\"a \\\"b\"@[192.0.2.1]", "\"a \\\"b\"@[192.0.2.1]\n"},
                                        {"\u00FC@\u00FC.example", "\u00FC@\u00FC.example\n"},
                                        {"postmaster@x.example", "postmaster@x.example\n"}}) {
        std::string odd = failedReport;
        write("3", odd.replace(odd.find("a@x.example"), 11, found));
        EXPECT_EQ(shown({"--addresses", "--only", "hard"}), listed);
    }
    write("3",
          "From: MAILER-DAEMON@x.example\nSubject: Mail delivery failed\n\n"
          "RCPT To: nobody\nmailbox is full\n");
    EXPECT_TRUE(contains(shown({"--fields", "address", "--only", "soft"}), "MAILER-DAEMON@x"));
    EXPECT_EQ(shown({"--addresses", "--only", "soft"}), "");
}

TEST_F(OutputTest, ListsWhomToStopMailing) {
    const std::string dated = std::string("Date: today\n") + failedReport;
    for (const auto& [file, address, reply] :
         {std::tuple("1", "a@x.example", "550 5.1.1 User unknown"),
          std::tuple("2", "a@X.EXAMPLE", "550 5.1.1 User unknown"),
          std::tuple("3", "b@x.example", "552 5.2.2 Mailbox full"),
          std::tuple("4", "c@x.example", "550 5.7.1 Message refused as spam")}) {
        std::string bounce = dated;
        bounce.replace(bounce.find("a@x.example"), 11, address);
        bounce.insert(bounce.rfind("\n--b--"), std::string("\nDiagnostic-Code: smtp; ") + reply);
        write(file, bounce);
    }
    write(
        "5",
        "Content-Type: multipart/report; boundary=b\n\n--b\nContent-Type: "
        "message/feedback-report\n\nFeedback-Type: abuse\nOriginal-Rcpt-To: d@x.example\n--b--\n");
    const std::string dead = "a@x.example\tunknown-mailbox\ttoday\tUser unknown\t" + path("1");
    const std::string list = dead + "\nd@x.example\t\t\t\t" + path("5") + "\n";
    EXPECT_EQ(shown({"--suppress"}), list);
    EXPECT_EQ(shown({"--suppress", "--advice", "suppress"}), dead + "\n");
    std::string csv = "recipient,reason,date,evidence,location\n" + list;
    std::ranges::replace(csv, '\t', ',');
    std::string printed = shown({"--suppress", "--format", "csv"});
    std::erase(printed, '\r');
    std::erase(printed, '"');
    EXPECT_EQ(printed, csv);
    EXPECT_EQ(shown({"--suppress", "--html", path("page")}), list);
    EXPECT_TRUE(contains(contentOf(path("page")), "b@x.example"));
}

TEST_F(OutputTest, LetsNoControlCharacterThrough) {
    const std::string bad = "a\u009B31m\u202Eb\u2066\x7F\u2028\u200F";
    write("m", "From: " + bad + "@x.example\nSubject: " + bad +
                   "\nContent-Type: text/plain; "
                   "charset=utf-8\n\nDelivery failed: mailbox is full " +
                   bad + "@x.example " + bad);
    const std::string all = "source,address,from,subject,data";
    for (const std::vector<std::string>& form :
         std::vector<std::vector<std::string>>{{"--fields", all},
                                               {"--data", "--trace"},
                                               {"--format", "json", "--data", "--trace"},
                                               {"--format", "json", "--fields", all},
                                               {"--format", "csv", "--fields", all},
                                               {"--format", "tsv", "--fields", all},
                                               {"--summary", "--format", "json"},
                                               {"--explain"}}) {
        std::string text = shown(form);
        EXPECT_TRUE(form.front() == "--summary" || contains(text, "\u200F")) << text;
        std::erase(text, '\n');
        if (std::ranges::count(form, "csv") > 0) std::erase(text, '\r');
        if (std::ranges::count(form, "tsv") > 0) std::erase(text, '\t');
        EXPECT_EQ(findControl(text).at, npos) << text;
    }
    const Json line = Json::parse(shown({"--format", "json", "--fields", "subject"}));
    EXPECT_EQ(line["subject"], bad);
    EXPECT_TRUE(contains(run({bad}).err, "a\\x9B31m\\u202Eb\\u2066\\x7F\\u2028"));
}

TEST_F(OutputTest, KeepsSpreadsheetsFromComputing) {
    for (const char* value : {"=1+1", "+1", "-1", "@x", "x=1", "1", "'=1"}) {
        write("m", std::string("Subject: ") + value + "\n\n");
        const bool isFormula = std::string_view("=+-@").find(*value) != npos;
        const std::string exact = std::string("subject\r\n") + value + "\r\n";
        EXPECT_EQ(shown({"--format", "csv", "--fields", "subject"}), exact);
        EXPECT_EQ(shown({"--format", "csv", "--fields", "subject", "--csv-safe"}),
                  isFormula ? std::string(exact).insert(9, "'") : exact);
    }
    EXPECT_EQ(run({"--csv-safe", path("m")}).status, EXIT_WRONG_USAGE);
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
             "    |     ^^^^^^^^^^^          ",
             "^^^^^^^^^^^^^^\n",
         }) {
        EXPECT_NE(text.find(part), std::string::npos) << part << "in\n" << text;
    }
    EXPECT_NE(shown({"--explain", "--color", "always"}).find("m\x1b[1;7mailbox is full\x1b[0m\n"),
              std::string::npos);
    write("2", report);
    EXPECT_NE(shown({"--explain"}).find("\n  Recipient    later@Y.example, delayed: "),
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
