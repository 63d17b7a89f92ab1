#pragma once

#include <stdexcept>

#include <bouncecheck/LogTrace.h>

namespace bouncecheck {

/// A log on a full disk: keeps what is logged, and fails each time.
class FailingLog final : public LogBase {
public:
    LogTrace trace;

    void LogInfo(const char* text) override {
        trace.LogInfo(text);
        throw 1;  // an exception of no class, too
    }
    void LogWarning(const char* text) override { LogInfo(text); }
    void LogError(const char* text) override { LogInfo(text); }
    void EnterContext(const char* name, bool show) override {
        trace.EnterContext(name, show);
        fail();
    }
    void LeaveContext() override {
        trace.LeaveContext();
        fail();
    }
    void LogData(const char* tag, const char* value) override {
        trace.LogData(tag, value);
        fail();
    }
    [[noreturn]] static void fail() { throw std::runtime_error("no space left"); }
};

}  // namespace bouncecheck
