// Our side of the comparison in memory. The messages stay with the caller, so the
// copy that a message makes of its bytes counts against us.

#include <bouncecheck/LogNull.h>
#include <bouncecheck/LogTrace.h>
#include <bouncecheck/bouncecheck.h>
#include <bouncecheck/classes/BounceCheck.h>
#include <bouncecheck/classes/Email2.h>
#include "bench/sides/Sides.h"

namespace bouncecheck::bench {
namespace {

std::size_t countEntities(const Email2& entity) {
    std::size_t count = 1;
    for (int i = 0; i < entity.getNumParts(); ++i) count += countEntities(*entity.getPart(i));
    return count;
}

void parseAll(const std::vector<StoredMessage>& messages) {
    std::size_t entities = 0;
    for (const StoredMessage& message : messages) {
        const Email2 email(message.bytes);
        entities += countEntities(email);
    }
    if (entities < messages.size()) throw std::logic_error("a message without entity");
}

template <class Log>
void classifyAll(const std::vector<StoredMessage>& messages) {
    BounceCheck check;
    for (const StoredMessage& message : messages) {
        Email2 email(message.bytes);
        Log log;
        StringBuffer address;
        StringBuffer data;
        check.checkEmail(email, address, data, log);
    }
}

void readTraces(const std::vector<StoredMessage>& messages) {
    BounceCheck check;
    std::size_t events = 0;
    for (const StoredMessage& message : messages) {
        Email2 email(message.bytes);
        LogTrace log;
        StringBuffer address;
        StringBuffer data;
        check.checkEmail(email, address, data, log);
        events += log.events().size();
    }
    if (events == 0) throw std::logic_error("no event");
}

/// What a program asks of each message: the verdict, and who failed and why where it `Asks`.
template <bool Asks>
void answerAll(const std::vector<StoredMessage>& messages) {
    Classifier classifier;
    std::size_t recipients = 0;
    for (const StoredMessage& stored : messages) {
        const Message message(stored.bytes);
        classifier.classify(message);
        if constexpr (Asks) recipients += recipientsOf(message).size();
    }
    if (Asks && recipients == 0) throw std::logic_error("no recipient");
}

void timeAll(const std::vector<StoredMessage>& messages) {
    printTime("parse", [&] { parseAll(messages); });
    printTime("classify", [&] { classifyAll<LogNull>(messages); });
    printTime("classify-traced", [&] { classifyAll<LogTrace>(messages); });
    printTime("classify-trace-read", [&] { readTraces(messages); });
    printTime("verdict", [&] { answerAll<false>(messages); });
    printTime("verdict-recipients", [&] { answerAll<true>(messages); });
}

std::size_t countParts(const std::string& bytes) { return countEntities(Email2(bytes)); }

}  // namespace
}  // namespace bouncecheck::bench

int main(int argc, char** argv) {
    return bouncecheck::bench::runSide(argc, argv, bouncecheck::bench::countParts,
                                       bouncecheck::bench::timeAll);
}
