#pragma once

#include <bouncecheck/Export.h>

namespace bouncecheck {

class StringBuffer;

/// Where the classifier writes how it reasons: nested contexts, lines and
/// tagged values.
///
/// Texts are NUL-terminated UTF-8 that belong to the caller; a log copies what
/// it keeps. A log serves one thread at a time. It is a side channel only:
/// nothing that it does, throwing included, changes a verdict.
class BOUNCECHECK_EXPORT LogBase {
public:
    LogBase() = default;
    LogBase(const LogBase&) = delete;
    LogBase& operator=(const LogBase&) = delete;
    virtual ~LogBase() = default;

    /// Whether anything is done with what is logged. Texts for a log that drops
    /// them need not be made.
    bool keeps() const noexcept { return keeps_; }

    // Programs may be built against this table: the order of the operations
    // stays as it is.

    /// One informational line.
    virtual void LogInfo(const char* text) = 0;
    /// One line about something wrong in the message.
    virtual void LogWarning(const char* text) = 0;
    /// One line about something that could not be done.
    virtual void LogError(const char* text) = 0;
    /// Opens a context inside the innermost open one. `show` false asks a log
    /// that prints to leave the context out when it stays empty.
    virtual void EnterContext(const char* name, bool show) = 0;
    /// Closes the innermost open context.
    virtual void LeaveContext() = 0;
    /// A tagged text.
    virtual void LogData(const char* tag, const char* value) = 0;

    /// A tagged integer, in decimal.
    void LogDataLong(const char* tag, long value);
    /// A tagged text; a NUL byte in it ends it.
    void LogDataSb(const char* tag, const StringBuffer& value);

protected:
    explicit LogBase(bool keeps) noexcept : keeps_(keeps) {}

private:
    const bool keeps_ = true;
};

}  // namespace bouncecheck
