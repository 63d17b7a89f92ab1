#include <bouncecheck/LogTrace.h>

#include <utility>

#include "text/Ascii.h"

namespace bouncecheck {
namespace {

std::string copyOf(const char* s) { return std::string(ascii::viewOf(s)); }

}  // namespace

void LogTrace::LogInfo(const char* text) { events_.push_back({Kind::info, copyOf(text), {}}); }
void LogTrace::LogWarning(const char* text) { LogInfo(text); }
void LogTrace::LogError(const char* text) { LogInfo(text); }

void LogTrace::EnterContext(const char* name, bool) {
    ++unopened_;
    if (open_.size() == open_.capacity()) open_.reserve(2 * open_.size() + 8);
    events_.push_back({Kind::enter, copyOf(name), {}});
    open_.push_back(events_.size() - 1);
    --unopened_;
}

void LogTrace::LeaveContext() {
    if (unopened_ > 0) {
        --unopened_;
        return;
    }
    if (open_.empty()) return;
    std::string name = events_[open_.back()].text;
    open_.pop_back();
    events_.push_back({Kind::leave, std::move(name), {}});
}

void LogTrace::LogData(const char* tag, const char* value) {
    events_.push_back({Kind::data, copyOf(tag), valueOf(value)});
}

ByteStore LogTrace::valueOf(const char* value) {
    constexpr std::size_t shortValue = 4096;
    const std::string_view text = ascii::viewOf(value);
    if (text.size() <= shortValue) return ByteStore(std::string(text));
    if (longValue_.view() != text) longValue_ = ByteStore::shared(std::string(text));
    return longValue_;
}

std::vector<LogTrace::Event> LogTrace::takeEvents() noexcept {
    open_.clear();
    unopened_ = 0;
    longValue_ = {};
    return std::exchange(events_, {});
}

}  // namespace bouncecheck
