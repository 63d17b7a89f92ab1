#include "tool/ToolRun.h"

#include <algorithm>
#include <map>

namespace bouncecheck {
namespace {

TEST_F(Tool, PrintsOneJsonObjectForEachMessage) {
    write("2.eml", failedReport);
    write("10/letter", "Subject: hello\n\nSee you.\n");
    const ToolRun result = run({"--format", "json", path()});
    EXPECT_EQ(result.status, EXIT_ALL_CLASSIFIED);
    EXPECT_EQ(result.err, "");
    Json letter = Json::parse(R"({"index":1,"recipients":[],"report":{},"returned":{},"type":0,
                                  "name":"none","label":null,"address":""})");
    letter["source"] = path("10/letter");
    Json report = Json::parse(R"({"index":1,"report":{},"returned":{},"type":1,"name":"hard",
        "recipients":[{"address":"a@x.example","outcome":"failed","reason":"other",
            "advice":"retry","evidence":{"found_in":"report"}}],"label":"1.mri",
        "address":"a@x.example"})");
    report["source"] = path("2.eml");
    EXPECT_EQ(result.lines(), (std::vector<Json>{letter, report}));
}

TEST_F(Tool, AddsDataAndTraceOnRequest) {
    const std::string file = write("x", failedReport);
    const Json line = run({"--format", "json", "--data", "--trace", file}).lines().at(0);
    EXPECT_EQ(line["data"], "Final-Recipient: rfc822;a@x.example\r\nAction: failed");
    const Json& trace = line["trace"];
    EXPECT_EQ(trace.at(0), (Json{{"tag", "subject"}, {"value", "x"}}));
    EXPECT_EQ(trace.at(4), (Json{{"enter", "checkAVGMAIL"}}));
    EXPECT_EQ(trace.at(5), (Json{{"leave", "checkAVGMAIL"}}));
    EXPECT_EQ(trace.back(), (Json{{"tag", "bounceType"}, {"value", "1"}}));
    EXPECT_NE(std::ranges::find(trace, Json{{"info", "Bounce type 1.mri"}}), trace.end());
}

TEST_F(Tool, PrintsATableWithACount) {
    const std::string file = write("x", failedReport);
    const ToolRun result = run({file, "--trace"});
    EXPECT_NE(result.out.find("hard         1.mri   other             a@x.example "),
              std::string::npos);
    EXPECT_NE(result.out.find("    checkEmailInner:\n      checkAVGMAIL:\n"), std::string::npos);
    EXPECT_NE(result.out.find("Bounce type 1.mri   <== decides\n"), std::string::npos);
    EXPECT_TRUE(result.out.ends_with("\nhard         1\nmessages     1\n"));
}

TEST_F(Tool, LetsNoMessageSteerTheTerminal) {
    const std::string file =
        write("x", std::string(failedReport).replace(0, 10, "Subject: \x1b[2J"));
    const ToolRun result = run({"--trace", "--data", file});
    EXPECT_EQ(result.out.find('\x1b'), std::string::npos);
}

TEST_F(Tool, ListsEveryRowOfEveryTable) {
    std::map<std::string, std::size_t> rows;
    for (const Json& line : run({"--list-phrases"}).lines()) {
        EXPECT_EQ(line["row"], rows[line["table"]]++);
        EXPECT_NE(line["phrase"], "");
    }
    EXPECT_EQ(rows.size(), 18U);
    EXPECT_EQ(rows["BounceDataMarkers"], 269U);
}

TEST_F(Tool, TellsWrongUsageInOneLine) {
    const std::pair<std::vector<std::string>, const char*> mistakes[] = {
        {{"--format", "xml"}, "\"xml\" is unknown; choose from: table, json, csv, tsv"},
        {{"--no-such-option"}, "--no-such-option"},
        {{"--fields", "name,nme"}, "\"nme\""},
        {{"--only", "hard,4"}, "\"4\""},
        {{"--only", "hard", "--only", "soft"}, "--only is given more than once"},
        {{"--verp", "b-{tag}@x", "--verp", "c-{tag}@x", "--color"}, "--color"},
        {{"--only", "hard", "--not", "hard,soft"}, "--only and --not leave no verdict"},
        {{"--not", ""}, "no verdict is named \"\""},
        {{"--max-message-size", "5x"}, "\"5x\" is not a size"},
        {{"-j", "0"}, "-j"},
        {{"-0"}, "-0 requires --from-list"},
        {{"--from-list", "-", "-"}, "standard input can be read only once"},
        {{"-", "-"}, "standard input can be read only once"},
        {{"--max-message-size", "99999999999g"}, "is not a size"},
        {{"--color", "yes"}, "choose from: auto, always, never"},
        {{"--summary", "--data"}, "lists of messages"},
        {{"--addresses", "--format", "json"}, "form of their own"},
        {{"--list-phrases", "x"}, "--list-phrases excludes"},
        {{"--list-phrases", "--format", "csv"}, "--list-phrases excludes --format"},
        {{"--output", ""}, "the name is empty"},
        {{"-o", "-"}, "\"-\" is no file; write ./-"},
        {{"--html", ""}, "the name is empty"},
        {{"--fields", "[name]"}, "\"[name]\""},
        {{"--explain", "--trace"}, "lists of messages"},
        {{"--format", "csv", "--summary"}, "--summary is a table or json"},
        {{"--format", "tsv", "--trace"}, "--trace is for a table or json"},
    };
    for (const auto& [arguments, problem] : mistakes) expectRefused(arguments, problem);
    EXPECT_EQ(run({"[a,b]"}).err, "bouncecheck: [a,b]: No such file or directory\n");
    EXPECT_EQ(run({"--help"}).status, EXIT_ALL_CLASSIFIED);
    EXPECT_TRUE(run({"--version"}).out.starts_with("bouncecheck "));
}

}  // namespace
}  // namespace bouncecheck
