#include <bouncecheck/LogTrace.h>

#include <algorithm>
#include <utility>

#include "text/Ascii.h"

namespace bouncecheck {

using ascii::viewOf;

void LogTrace::LogInfo(const char* text) { add(Line::info, viewOf(text)); }
void LogTrace::LogWarning(const char* text) { LogInfo(text); }
void LogTrace::LogError(const char* text) { LogInfo(text); }

void LogTrace::EnterContext(const char* name, bool) {
    ++unopened_;
    add(Line::enter, viewOf(name));
    --unopened_;
    ++depth_;
}

void LogTrace::LeaveContext() {
    if (unopened_ > 0) {
        --unopened_;
        return;
    }
    if (depth_ == 0) return;
    add(Line::leave, {});
    --depth_;
}

void LogTrace::LogData(const char* tag, const char* value) {
    constexpr std::size_t shortValue = 4096;
    const std::string_view text = viewOf(value);
    if (text.size() <= shortValue) {
        add(Line::data, viewOf(tag), text);
    } else if (!longValues_.empty() && longValues_.back().view() == text) {
        add(Line::sameLongData, viewOf(tag));
    } else {
        longValues_.push_back(ByteStore::shared(std::string(text)));
        try {
            add(Line::longData, viewOf(tag));
        } catch (...) {
            longValues_.pop_back();
            throw;
        }
    }
}

void LogTrace::add(Line line, std::string_view text, std::string_view value) {
    constexpr std::size_t usualSize = 1000;  // bytes
    if (lines_.empty()) lines_.reserve(usualSize);
    const std::size_t start = lines_.size();
    lines_.resize(start + 1 + text.size() + 1 + value.size() + 1);  // NULs
    char* out = lines_.data() + start;
    *out++ = static_cast<char>(line);
    out = std::copy(text.begin(), text.end(), out) + 1;
    std::copy(value.begin(), value.end(), out);
    ++lineCount_;
}

LogTrace::Event LogTrace::eventOf(Line line, std::string_view text, std::string_view value) const {
    switch (line) {
        case Line::enter: return {Kind::enter, std::string(text), {}};
        case Line::leave: return {Kind::leave, events_[open_.back()].text, {}};
        case Line::info: return {Kind::info, std::string(text), {}};
        case Line::data: break;
        case Line::longData: return {Kind::data, std::string(text), longValues_[madeLongValues_]};
        case Line::sameLongData:
            return {Kind::data, std::string(text), longValues_[madeLongValues_ - 1]};
    }
    return {Kind::data, std::string(text), ByteStore(std::string(value))};
}

void LogTrace::makeEvents() const {
    if (events_.empty()) events_.reserve(lineCount_);
    while (madeBytes_ < lines_.size()) {
        const char* const at = lines_.c_str() + madeBytes_;
        const auto line = static_cast<Line>(*at);
        const std::string_view text(at + 1);
        const std::string_view value(text.data() + text.size() + 1);
        if (open_.size() == open_.capacity()) open_.reserve(2 * open_.size() + 8);
        events_.push_back(eventOf(line, text, value));
        if (line == Line::enter) open_.push_back(events_.size() - 1);
        if (line == Line::leave) open_.pop_back();
        if (line == Line::longData) ++madeLongValues_;
        madeBytes_ += 1 + text.size() + 1 + value.size() + 1;
    }
}

std::span<const LogTrace::Event> LogTrace::events() const {
    makeEvents();
    return events_;
}

std::vector<LogTrace::Event> LogTrace::takeEvents() {
    makeEvents();
    lines_ = {};
    lineCount_ = 0;
    longValues_ = {};
    depth_ = 0;
    unopened_ = 0;
    madeBytes_ = 0;
    madeLongValues_ = 0;
    open_.clear();
    return std::exchange(events_, {});
}

}  // namespace bouncecheck
