#include <bouncecheck/LogBase.h>

#include <charconv>
#include <limits>

#include <bouncecheck/classes/StringBuffer.h>

namespace bouncecheck {

void LogBase::LogDataLong(const char* tag, long value) {
    if (!keeps_) return;
    char digits[std::numeric_limits<long>::digits10 + 3] = {};
    std::to_chars(digits, digits + sizeof digits - 1, value);
    LogData(tag, digits);
}

void LogBase::LogDataSb(const char* tag, const StringBuffer& value) {
    if (keeps_) LogData(tag, value.getString());
}

}  // namespace bouncecheck
