#include "tool/Classify.h"

#include <utility>

#include "bounce/BounceCheck.h"
#include "bounce/VerdictLabel.h"
#include "mime/Email2.h"
#include "text/Ascii.h"
#include "text/StringBuffer.h"

namespace bouncecheck {
namespace {

/// Keeps the label of the last verdict line and nothing else.
class LabelLog final : public LogBase {
public:
    const std::string& label() const noexcept { return label_; }

    void LogInfo(const char* text) override {
        const std::string_view label = verdictLabel(ascii::viewOf(text));
        if (!label.empty()) label_ = label;
    }
    void LogWarning(const char*) override {}
    void LogError(const char*) override {}
    void EnterContext(const char*, bool) override {}
    void LeaveContext() override {}
    void LogData(const char*, const char*) override {}

private:
    std::string label_;
};

}  // namespace

std::size_t decidingEvent(std::span<const LogTrace::Event> events) noexcept {
    for (std::size_t i = events.size(); i-- > 0;) {
        const LogTrace::Event& event = events[i];
        const bool isLabel =
            event.kind == LogTrace::Kind::info && !verdictLabel(event.text).empty();
        const bool isRule = event.kind == LogTrace::Kind::data && event.text == "BounceType";
        if (isLabel || isRule) return i;
    }
    return events.size();
}

Classified classify(std::string source, std::string message, Trace trace) {
    Classified result;
    result.source = std::move(source);
    Email2 email(std::move(message));
    BounceCheck check;
    StringBuffer address;
    StringBuffer data;
    if (trace == Trace::on) {
        LogTrace log;
        result.type = check.checkEmail(email, address, data, log);
        result.trace = log.takeEvents();
        result.label = lastVerdictLabel(result.trace);
    } else {
        LabelLog log;
        result.type = check.checkEmail(email, address, data, log);
        result.label = log.label();
    }
    result.address = address.view();
    result.data = data.view();
    return result;
}

}  // namespace bouncecheck
