#pragma once

#include <bouncecheck/LogBase.h>

namespace bouncecheck {

/// Passes everything on to another log and swallows what that one throws, so
/// that a failing log cannot end a classification.
class LogGuard final : public LogBase {
public:
    explicit LogGuard(LogBase& target) noexcept : LogBase(target.keeps()), target_(target) {}

    void LogInfo(const char* text) override {
        quietly([&] { target_.LogInfo(text); });
    }
    void LogWarning(const char* text) override {
        quietly([&] { target_.LogWarning(text); });
    }
    void LogError(const char* text) override {
        quietly([&] { target_.LogError(text); });
    }
    void EnterContext(const char* name, bool show) override {
        quietly([&] { target_.EnterContext(name, show); });
    }
    void LeaveContext() override {
        quietly([&] { target_.LeaveContext(); });
    }
    void LogData(const char* tag, const char* value) override {
        quietly([&] { target_.LogData(tag, value); });
    }

private:
    template <class Call>
    static void quietly(Call call) noexcept {
        try {
            call();
        } catch (...) {
        }
    }

    LogBase& target_;
};

}  // namespace bouncecheck
