#include "Answer.h"

#include <utility>

namespace bouncecheck::python {
namespace {

Answer answerFor(std::string_view bytes, std::span<const VerpPattern> verp, bool withTrace,
                 Classifier& classifier) {
    const Message message(bytes);
    Answer answer;
    if (withTrace) {
        LogTrace log;
        answer.verdict = classifier.classify(message, log);
        answer.trace = log.takeEvents();
    } else {
        answer.verdict = classifier.classify(message);
    }
    // It can be as long as the message, and many answers wait for their turn.
    answer.verdict.text = {};
    answer.recipients = recipientsOf(message, verp);
    answer.facts = factsOf(message);
    return answer;
}

}  // namespace

std::vector<Answer> answersFor(std::span<const std::string_view> messages,
                               std::span<const VerpPattern> verp, bool withTrace) {
    Classifier classifier;
    std::vector<Answer> answers;
    answers.reserve(messages.size());
    for (const std::string_view bytes : messages) {
        answers.push_back(answerFor(bytes, verp, withTrace, classifier));
    }
    return answers;
}

}  // namespace bouncecheck::python
