// The whole classification, and what has to hold for any message.

#include <string>
#include <vector>

#include <bouncecheck/LogNull.h>
#include <bouncecheck/LogTrace.h>
#include <bouncecheck/classes/BounceCheck.h>
#include <bouncecheck/classes/Email2.h>
#include "bounce/MessageClassifier.h"
#include "fuzz/Input.h"
#include "fuzz/Require.h"
#include "mime/Entity.h"

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

/// The finding agrees with the verdict, and what it names is where it says.
void requireFound(const std::string& message, const Result& expected, const Events& events) {
    for (const auto engine : {phrases::Engine::pass, phrases::Engine::plain}) {
        LogTrace log;
        const ClassifiedMessage found =
            MessageClassifier(engine).classify(Entity(std::string_view(message)), log);
        const Finding& finding = found.finding;
        require(found.type == expected.type && finding.address.text.view() == expected.address &&
                    found.text.view() == expected.data,
                "the finding is about the same verdict");
        require(log.takeEvents() == events, "the trace is the same");
        require((finding.rule         ? finding.rule->type
                 : finding.lastResort ? finding.lastResort->bounceType
                                      : BOUNCE_NONE) == found.type,
                "the rule gives the type");
    }
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
    requireFound(message, result, events);

    LogNull noLog;
    require(classify(fresh, email, noLog) == result, "twice, and without trace, it is the same");

    // One object for all inputs: nothing of those before may be left in it.
    static BounceCheck used;
    Email2 again(message);
    require(classify(used, again, trace) == result, "the message before does not matter");
    require(trace.takeEvents() == events, "the message before does not show in the trace");
    return 0;
}
