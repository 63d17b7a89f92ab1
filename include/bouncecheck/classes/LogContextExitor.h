#pragma once

#include <bouncecheck/LogBase.h>

namespace bouncecheck {

/// Holds a context of a log open for as long as it lives.
class LogContextExitor {
public:
    LogContextExitor(LogBase& log, const char* name) : log_(log) { log_.EnterContext(name, true); }
    LogContextExitor(const LogContextExitor&) = delete;
    LogContextExitor& operator=(const LogContextExitor&) = delete;
    ~LogContextExitor() { log_.LeaveContext(); }

private:
    LogBase& log_;
};

}  // namespace bouncecheck
