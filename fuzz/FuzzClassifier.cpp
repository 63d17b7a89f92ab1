// The whole classification, and what has to hold for any message.

#include <charconv>
#include <string>
#include <vector>

#include "bounce/BounceCheck.h"
#include "bounce/VerdictLabel.h"
#include "fuzz/Input.h"
#include "fuzz/Require.h"
#include "log/LogNull.h"
#include "log/LogTrace.h"
#include "mime/Email2.h"

namespace bouncecheck::fuzz {
namespace {

using Events = std::vector<LogTrace::Event>;

struct Result {
    int type;
    std::string address;
    std::string data;

    bool operator==(const Result&) const = default;
};

Result classify(BounceCheck& check, Email2& email, LogBase& log) {
    StringBuffer address;
    StringBuffer data;
    address.append("of the message before");
    const int type = check.checkEmail(email, address, data, log);
    return {type, std::string(address.view()), std::string(data.view())};
}

/// Contexts close in the order that they have opened in reverse.
void requireBalanced(const Events& events) {
    std::vector<std::string> open;
    for (const LogTrace::Event& event : events) {
        if (event.kind == LogTrace::Kind::enter) open.push_back(event.text);
        if (event.kind != LogTrace::Kind::leave) continue;
        require(!open.empty() && open.back() == event.text, "a context closes after it opened");
        open.pop_back();
    }
    require(open.empty(), "no context stays open");
}

/// The type that the last verdict among the events tells, or 0: a label before
/// its first dot, or the number that the rule table logs.
int toldType(const Events& events) {
    for (std::size_t i = events.size(); i-- > 0;) {
        const LogTrace::Event& event = events[i];
        std::string_view told;
        if (event.kind == LogTrace::Kind::info) told = verdictLabel(event.text);
        if (event.kind == LogTrace::Kind::data && event.text == "BounceType") told = event.value;
        int type = 0;
        std::from_chars(told.data(), told.data() + told.size(), type);
        if (type != 0) return type;
    }
    return 0;
}

}  // namespace
}  // namespace bouncecheck::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace bouncecheck;
    using namespace bouncecheck::fuzz;
    const std::string message(Input(data, size).rest());

    Email2 email(message);
    BounceCheck fresh;
    LogTrace trace;
    const Result result = classify(fresh, email, trace);
    const Events events = trace.takeEvents();
    require(*bounceTypeName(result.type) != '\0', "the verdict is one of the table");
    requireBalanced(events);
    require(toldType(events) == result.type, "the last label agrees with the verdict");

    LogNull noLog;
    require(classify(fresh, email, noLog) == result, "twice, and without trace, it is the same");

    // One object for all inputs: nothing of those before may be left in it.
    static BounceCheck used;
    Email2 again(message);
    require(classify(used, again, trace) == result, "the message before does not matter");
    require(trace.takeEvents() == events, "the message before does not show in the trace");
    return 0;
}
