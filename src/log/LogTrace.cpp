#include "log/LogTrace.h"

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
    events_.push_back({Kind::data, copyOf(tag), copyOf(value)});
}

std::vector<LogTrace::Event> LogTrace::takeEvents() noexcept {
    open_.clear();
    unopened_ = 0;
    return std::exchange(events_, {});
}

}  // namespace bouncecheck
