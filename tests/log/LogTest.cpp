#include <gtest/gtest.h>

#include <climits>

#include <bouncecheck/TraceTree.h>
#include <bouncecheck/classes/LogContextExitor.h>
#include <bouncecheck/classes/StringBuffer.h>
#include "log/FailingLog.h"
#include "log/LogGuard.h"
#include "text/Controls.h"
#include "text/Search.h"
#include "text/Utf8.h"

namespace bouncecheck {
namespace {

void decide(LogBase& log, int way) {
    const LogContextExitor outer(log, "out");
    log.LogInfo("info");
    const LogContextExitor inner(log, "in");
    if (way == 1) return;
    if (way == 2) FailingLog::fail();
    log.LogDataLong("tag", 7);
}

TEST(LogGuard, LetsNoFailureDisturbTheContexts) {
    for (const int way : {0, 1, 2}) {
        FailingLog failing;
        LogGuard log(failing);
        try {
            decide(log, way);
        } catch (const std::runtime_error&) {
        }
        log.LogWarning("w");
        log.LogError("e");
        std::string events;
        for (const auto& event : failing.trace.takeEvents())
            events +=
                "+-=:"[static_cast<int>(event.kind)] + event.text + std::string(event.value.view());
        EXPECT_EQ(events, way == 0 ? "+out=info+in:tag7-in-out=w=e" : "+out=info+in-in-out=w=e");
    }
}

TEST(LogTrace, KeepsCopiesAndBearsWhatDoesNotMatch) {
    LogTrace log;
    log.EnterContext("taken", true);
    log.takeEvents();
    log.LeaveContext();
    std::string text = "a";
    log.LogInfo(text.c_str());
    text = "b";
    StringBuffer sb;
    sb.appendN("ab\0c", 4);
    log.LogDataSb("sb", sb);
    log.LogData(nullptr, nullptr);
    log.EnterContext(nullptr, false);
    log.LogDataLong("n", LONG_MIN);
    const std::string number = std::to_string(LONG_MIN);
    EXPECT_EQ(traceTree(log.events()), "a\nsb: \"ab\"\n: \"\"\n:\n  n: \"" + number + "\"\n");
}

TEST(TraceTree, MarksCutsAndEscapes) {
    LogTrace log;
    const char* nasty = "a\r\n\t\x1B[31m\x7F\x01 \u00E9";
    const std::string safe = "a\\r\\n\\t\\x1B[31m\\x7F\\x01 \u00E9";
    log.EnterContext(nasty, true);
    log.LogInfo(nasty);
    log.LogData(nasty, nasty);
    EXPECT_EQ(traceTree(log.events(), {.margin = "| ", .markedEvent = 1, .mark = " <-"}),
              "| " + safe + ":\n|   " + safe + " <-\n|   " + safe + ": \"" + safe + "\"\n");
    // CSI, the one-character form of ESC [.
    EXPECT_FALSE(contains(escapeControls("\u009B31m"), "\u009B"));
    log.LogData("a", ("xxx\u00E9" + std::string(4995, 'y')).c_str());
    const std::string t = traceTree(log.events(), {.maxValueBytes = 4});
    EXPECT_TRUE(contains(t, "\"xxx"));
    EXPECT_FALSE(contains(t, "yy"));
    EXPECT_TRUE(contains(t, "5000"));
    EXPECT_TRUE(isUtf8(t));
}

}  // namespace
}  // namespace bouncecheck
