#pragma once

#include <bouncecheck/Export.h>
#include <bouncecheck/LogBase.h>

namespace bouncecheck {

/// A log that keeps nothing.
class BOUNCECHECK_EXPORT LogNull final : public LogBase {
public:
    LogNull() noexcept : LogBase(false) {}

    void LogInfo(const char*) override {}
    void LogWarning(const char*) override {}
    void LogError(const char*) override {}
    void EnterContext(const char*, bool) override {}
    void LeaveContext() override {}
    void LogData(const char*, const char*) override {}
};

}  // namespace bouncecheck
