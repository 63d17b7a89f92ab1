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
    const std::vector<std::string> mistakes[] = {
        {"--format", "xml"},
        {"--no-such-option"},
        {"--fields", "name,nme"},
        {"--only", "hard,4"},
        {"--not", ""},
        {"--max-message-size", "5x"},
        {"-j", "0"},
        {"-0"},
        {"--max-message-size", "99999999999g"},
        {"--color", "yes"},
        {"--summary", "--data"},
        {"--addresses", "--format", "json"},
        {"--list-phrases", "x"},
        {"--list-phrases", "--format", "csv"},
        {"--output", ""},
        {"--html", ""},
        {"--fields", "[name]"},
        {"--explain", "--trace"},
        {"--format", "csv", "--summary"},
        {"--format", "tsv", "--trace"},
    };
    for (const auto& arguments : mistakes) {
        const ToolRun result = run(arguments);
        EXPECT_EQ(result.status, EXIT_WRONG_USAGE);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(std::ranges::count(result.err, '\n'), 1) << arguments.front();
    }
    EXPECT_EQ(run({"[a,b]"}).err, "bouncecheck: [a,b]: No such file or directory\n");
    EXPECT_EQ(run({"--help"}).status, EXIT_ALL_CLASSIFIED);
    EXPECT_TRUE(run({"--version"}).out.starts_with("bouncecheck "));
}

}  // namespace
}  // namespace bouncecheck
