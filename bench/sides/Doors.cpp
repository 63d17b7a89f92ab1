// What a message costs a program in C++ and one in C: the verdict, the recipients and the facts
// of messages in memory. A line `name<TAB>seconds of a pass<TAB>recipients in all` for each.

#include <bouncecheck/bouncecheck.h>
#include <bouncecheck/bouncecheck_c.h>

#include <cstddef>
#include <exception>
#include <iostream>
#include <memory>
#include <new>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "bench/support/Clocks.h"
#include "bench/support/MessageFolder.h"

namespace bouncecheck::bench {
namespace {

using Messages = std::vector<StoredMessage>;

std::size_t byCpp(const Messages& messages) {
    std::size_t recipients = 0;
    Classifier classifier;
    for (const StoredMessage& stored : messages) {
        const Message message(stored.bytes);
        const Verdict verdict = classifier.classify(message);
        recipients += recipientsOf(message).size();
        const Facts facts = factsOf(message);
    }
    return recipients;
}

std::size_t byC(const Messages& messages) {
    bouncecheck_classifier* made = nullptr;
    if (bouncecheck_classifier_new(&made) != BOUNCECHECK_OK) throw std::bad_alloc();
    const std::unique_ptr<bouncecheck_classifier, decltype(&bouncecheck_classifier_free)> owner(
        made, bouncecheck_classifier_free);
    std::size_t recipients = 0;
    for (const StoredMessage& stored : messages) {
        bouncecheck_verdict verdict;
        bouncecheck_facts facts;
        bouncecheck_recipient recipient;
        if (bouncecheck_classify(made, stored.bytes.data(), stored.bytes.size(),
                                 BOUNCECHECK_RECIPIENTS | BOUNCECHECK_FACTS) != BOUNCECHECK_OK ||
            bouncecheck_get_verdict(made, &verdict, sizeof verdict) != BOUNCECHECK_OK ||
            bouncecheck_get_facts(made, &facts, sizeof facts) != BOUNCECHECK_OK) {
            throw std::runtime_error("a call failed");
        }
        const std::size_t count = bouncecheck_recipient_count(made);
        for (std::size_t i = 0; i < count; ++i) {
            bouncecheck_get_recipient(made, i, &recipient, sizeof recipient);
        }
        recipients += count;
    }
    return recipients;
}

void measure(std::string_view name, std::size_t (*pass)(const Messages&),
             const Messages& messages) {
    std::size_t recipients = 0;
    const double seconds = secondsPerPass([&] { recipients = pass(messages); });
    std::cout << name << '\t' << seconds << '\t' << recipients << '\n';
}

}  // namespace
}  // namespace bouncecheck::bench

int main(int argc, char** argv) {
    using namespace bouncecheck::bench;
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " FOLDER\n";
        return 2;
    }
    try {
        const Messages messages = readMessages(argv[1]);
        measure("cpp", byCpp, messages);
        measure("c", byC, messages);
    } catch (const std::exception& error) {
        std::cerr << argv[0] << ": " << error.what() << '\n';
        return 1;
    }
    return 0;
}
