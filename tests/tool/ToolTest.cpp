#include "tool/Run.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

namespace bouncecheck {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

struct ToolRun {
    int status;
    std::string out;
    std::string err;

    std::vector<Json> lines() const {
        std::vector<Json> all;
        std::istringstream stream(out);
        for (std::string line; std::getline(stream, line);) all.push_back(Json::parse(line));
        return all;
    }
};

ToolRun run(std::vector<std::string> arguments) {
    std::vector<const char*> argv = {"bouncecheck"};
    for (const std::string& argument : arguments) argv.push_back(argument.c_str());
    std::ostringstream out;
    std::ostringstream err;
    const int status = runTool(static_cast<int>(argv.size()), argv.data(), out, err);
    return {status, out.str(), err.str()};
}

/// A folder of its own for each test.
class Tool : public testing::Test {
protected:
    Tool() : folder_(fs::path(testing::TempDir()) / ("bouncecheck-" + testName())) {
        fs::remove_all(folder_);
        fs::create_directories(folder_);
    }
    ~Tool() override { fs::remove_all(folder_); }

    std::string write(const std::string& name, const std::string& content) {
        fs::create_directories((folder_ / name).parent_path());
        std::ofstream(folder_ / name, std::ios::binary) << content;
        return path(name);
    }
    std::string path(const std::string& name = "") const { return (folder_ / name).string(); }

    fs::path folder_;

private:
    static std::string testName() {
        return testing::UnitTest::GetInstance()->current_test_info()->name();
    }
};

const char* const failedReport =
    "Subject: x\nContent-Type: multipart/report; boundary=b\n\n--b\n\nSorry \xff.\n"
    "--b\nContent-Type: message/delivery-status\n\n"
    "Final-Recipient: rfc822;a@x.example\nAction: failed\n--b--\n";

TEST_F(Tool, PrintsOneJsonObjectForEachMessage) {
    write("2.eml", failedReport);
    write("10/letter", "Subject: hello\n\nSee you.\n");
    const ToolRun result = run({"--format", "json", path()});
    EXPECT_EQ(result.status, EXIT_ALL_CLASSIFIED);
    EXPECT_EQ(result.err, "");
    const Json letter = {{"source", path("10/letter")},
                         {"type", 0},
                         {"name", "none"},
                         {"label", nullptr},
                         {"address", ""}};
    const Json report = {{"source", path("2.eml")},
                         {"type", 1},
                         {"name", "hard"},
                         {"label", "1.mri"},
                         {"address", "a@x.example"}};
    EXPECT_EQ(result.lines(), (std::vector<Json>{letter, report}));
}

TEST_F(Tool, AddsDataAndTraceOnRequest) {
    const std::string file = write("x", failedReport);
    const Json line = run({"--format", "json", "--data", "--trace", file}).lines().at(0);
    EXPECT_EQ(line["data"], "Final-Recipient: rfc822;a@x.example\r\nAction: failed");
    const Json& trace = line["trace"];
    EXPECT_EQ(trace.at(0), (Json{{"tag", "subject"}, {"value", "x"}}));
    EXPECT_EQ(trace.at(3), (Json{{"enter", "checkEmailInner"}}));
    EXPECT_EQ(trace.at(4), (Json{{"enter", "checkAVGMAIL"}}));
    EXPECT_EQ(trace.at(5), (Json{{"leave", "checkAVGMAIL"}}));
    EXPECT_EQ(trace.back(), (Json{{"tag", "bounceType"}, {"value", "1"}}));
    EXPECT_NE(std::ranges::find(trace, Json{{"info", "Bounce type 1.mri"}}), trace.end());
}

TEST_F(Tool, ShowsBytesThatAreNoUtf8AsReplacements) {
    const std::string file = write("x", "From: a@x.example\n\nbad \xff byte");
    EXPECT_EQ(run({"--format", "json", "--data", file}).lines().at(0)["data"],
              "bad \xEF\xBF\xBD byte");
}

TEST_F(Tool, PrintsATableWithACount) {
    const std::string file = write("x", failedReport);
    const ToolRun result = run({file, "--trace"});
    EXPECT_NE(result.out.find("hard         1.mri   a@x.example "), std::string::npos);
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

TEST_F(Tool, GoesOnAfterWhatItCannotRead) {
    write("a.eml", failedReport);
    fs::create_symlink("nowhere", folder_ / "b.eml");
    write("c.eml", failedReport);
    const ToolRun result = run({"--format", "json", path(), path("missing")});
    EXPECT_EQ(result.status, EXIT_SOME_UNREADABLE);
    EXPECT_EQ(result.lines().size(), 2U);
    EXPECT_NE(result.err.find(path("b.eml") + ": No such file"), std::string::npos);
    EXPECT_NE(result.err.find(path("missing") + ": No such file"), std::string::npos);
}

TEST_F(Tool, ListsEveryRowOfEveryTable) {
    std::map<std::string, std::size_t> rows;
    for (const Json& line : run({"--list-phrases"}).lines()) {
        EXPECT_EQ(line["row"], rows[line["table"]]++);
        EXPECT_NE(line["phrase"], "");
    }
    EXPECT_EQ(rows.size(), 18U);
    EXPECT_EQ(rows["SoftBounceIndicators"], 7U);
    EXPECT_EQ(rows["VirusIndicators"], 67U);
    EXPECT_EQ(rows["BounceRules"], 18U);
    EXPECT_EQ(rows["BounceDataMarkers"], 269U);
}

TEST_F(Tool, TellsWrongUsageInOneLine) {
    for (const auto& arguments : {std::vector<std::string>{"--format", "xml"},
                                  std::vector<std::string>{"--no-such-option"}}) {
        const ToolRun result = run(arguments);
        EXPECT_EQ(result.status, EXIT_WRONG_USAGE);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(std::ranges::count(result.err, '\n'), 1);
    }
    EXPECT_EQ(run({"--help"}).status, EXIT_ALL_CLASSIFIED);
    EXPECT_TRUE(run({"--version"}).out.starts_with("bouncecheck "));
}

}  // namespace
}  // namespace bouncecheck
