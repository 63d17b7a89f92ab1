#include <bouncecheck/bouncecheck.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tool/output/MessageJson.h"

/// What the module exports: a C interface for one caller at a time, as JavaScript is. The caller
/// writes a text into the room that `bouncecheck_room` gives, and then calls what reads it.
namespace bouncecheck {
namespace {

struct Exchange {
    std::string input;
    std::string output;
    std::vector<VerpPattern> verp;
};

Exchange& exchange() {
    static Exchange only;
    return only;
}

}  // namespace
}  // namespace bouncecheck

namespace {

enum Wanted : std::uint32_t { wantsTrace = 1, wantsData = 2 };

}  // namespace

extern "C" {

/// Room for the `size` bytes that the next call reads; valid until that call.
[[clang::export_name("bouncecheck_room")]] char* bouncecheck_room(std::size_t size) {
    std::string& input = bouncecheck::exchange().input;
    input.resize(size);
    return input.data();
}

/// Adds a pattern for the next message, which the room holds. 0 when it has no such form.
[[clang::export_name("bouncecheck_add_verp")]] int bouncecheck_add_verp() {
    bouncecheck::Exchange& exchange = bouncecheck::exchange();
    auto pattern = bouncecheck::VerpPattern::parse(std::exchange(exchange.input, {}));
    if (!pattern) return 0;
    exchange.verp.push_back(*std::move(pattern));
    return 1;
}

/// Classifies the message that the room holds, which becomes free, as do the patterns. `wanted`
/// is a sum of `Wanted`. Returns the size of the result in bytes.
[[clang::export_name("bouncecheck_classify")]] std::size_t bouncecheck_classify(
    std::uint32_t wanted) {
    using namespace bouncecheck;
    Exchange& exchange = bouncecheck::exchange();
    const auto verp = std::exchange(exchange.verp, {});
    const Message message(std::exchange(exchange.input, {}));
    LogTrace trace;
    Classifier classifier;
    const Verdict verdict =
        (wanted & wantsTrace) ? classifier.classify(message, trace) : classifier.classify(message);
    JsonText json;
    json.beginObject();
    addFindings(json, verdict, recipientsOf(message, verp), factsOf(message));
    if (wanted & wantsData) json.member("data", verdict.text.view());
    if (wanted & wantsTrace) addTrace(json, trace.events());
    json.endObject();
    exchange.output = json.take();
    return exchange.output.size();
}

/// The result, valid until it is freed: an object of JSON in UTF-8 as docs/result.schema.json has
/// it, but `source` and `index`, which a message in memory does not have.
[[clang::export_name("bouncecheck_result")]] const char* bouncecheck_result() {
    return bouncecheck::exchange().output.data();
}

/// Frees what a call before left: room, patterns, result.
[[clang::export_name("bouncecheck_free")]] void bouncecheck_free() { bouncecheck::exchange() = {}; }

}  // extern "C"
