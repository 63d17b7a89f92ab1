#include <bouncecheck/LogNull.h>
#include <bouncecheck/bouncecheck.h>

#include <utility>

#include "bounce/Marker.h"
#include "bounce/MessageClassifier.h"
#include "bounce/tables/BounceDataMarkers.h"
#include "mime/Entity.h"

namespace bouncecheck {
namespace {

Match markerMatch(std::size_t row) noexcept {
    return {.table = "BounceDataMarkers",
            .row = row,
            .phrase = Marker(BounceDataMarkers[row]).text.data(),
            .text = TextOf::data,
            .letters = LetterCase::exact};
}

Verdict verdictOf(ClassifiedMessage&& message) {
    Finding& finding = message.finding;
    Verdict verdict;
    verdict.type = static_cast<BounceType>(message.type);
    verdict.rule = finding.rule;
    verdict.match = finding.match;
    verdict.pattern = finding.pattern;
    verdict.address = std::move(finding.address.text.takeBytes().changing());
    verdict.addressSource = finding.address.source;
    if (finding.address.marker) verdict.marker = markerMatch(*finding.address.marker);
    verdict.text = message.text.takeBytes();
    return verdict;
}

}  // namespace

Classifier::Classifier() : classifier_(std::make_unique<MessageClassifier>()) {}
Classifier::Classifier(Classifier&& other) noexcept = default;
Classifier& Classifier::operator=(Classifier&& other) noexcept = default;
Classifier::~Classifier() = default;

Verdict Classifier::classify(std::string_view bytes) { return classify(Message(bytes)); }

Verdict Classifier::classify(const Message& message) {
    LogNull none;
    return classify(message, none);
}

Verdict Classifier::classify(const Message& message, LogBase& log) {
    return verdictOf(classifier_->classify(entityOf(message), log));
}

Verdict classify(std::string_view bytes) { return Classifier().classify(bytes); }

}  // namespace bouncecheck
