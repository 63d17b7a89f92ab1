#include "doors/Doors.h"

#include <bouncecheck/TraceTree.h>

#include <string>
#include <vector>

#include "tool/ToolRun.h"

namespace bouncecheck {
namespace {

/// As it is printed: bytes that are no UTF-8 as U+FFFD.
Json printed(const Json& json) {
    return Json::parse(json.dump(-1, ' ', false, Json::error_handler_t::replace));
}

/// The trace of the tool's JSON as the text that C has.
std::string treeOf(const Json& trace) {
    LogTrace log;
    for (const Json& event : trace) {
        const auto text = [&](const char* key) { return event[key].get<std::string>(); };
        if (event.contains("enter")) log.EnterContext(text("enter").c_str(), true);
        if (event.contains("leave")) log.LeaveContext();
        if (event.contains("info")) log.LogInfo(text("info").c_str());
        if (event.contains("tag")) log.LogData(text("tag").c_str(), text("value").c_str());
    }
    return traceTree(log.events());
}

TEST(Doors, GiveWhatTheToolPrintsForAllSamples) {
    const auto lines =
        run({"--format", "json", "--single", "--trace", "--data", SAMPLES_DIR}).lines();
    EXPECT_GT(lines.size(), 100U);
    for (Json expected : lines) {
        const std::string source = expected["source"];
        const std::string mail = contentOf(source);
        expected.erase("source");
        expected.erase("index");
        EXPECT_EQ(printed(resultByCpp(mail)), expected) << source;
        expected["trace"] = treeOf(expected["trace"]);
        EXPECT_EQ(printed(resultByC(mail)), expected) << source;
    }
}

}  // namespace
}  // namespace bouncecheck
