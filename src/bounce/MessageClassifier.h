#pragma once

#include <bouncecheck/LogBase.h>
#include <bouncecheck/classes/StringBuffer.h>
#include "bounce/Evidence.h"
#include "bounce/Finding.h"
#include "phrases/Catalog.h"

namespace bouncecheck {

class Entity;

/// Reads the texts that the checks search. Returns whether the message is a delivery
/// report.
bool loadTexts(const Entity& message, StringBuffer& subject, StringBuffer& senderAddress,
               StringBuffer& senderName, StringBuffer& data, LogBase& log);

/// Runs the checks over the evidence and completes what they find; returns the
/// BounceType.
int verdictOn(const Evidence& evidence, Finding& finding, LogBase& log);

/// The verdict on one message, with all that led to it.
struct ClassifiedMessage {
    int type = 0;
    Finding finding;
    /// What was decided upon.
    StringBuffer text;
};

/// Classifies messages, one at a time, and keeps the memory of their texts for the next.
class MessageClassifier {
public:
    explicit MessageClassifier(phrases::Engine engine = phrases::Engine::pass) noexcept
        : engine_(engine) {}

    /// What `log` throws is swallowed.
    ClassifiedMessage classify(const Entity& message, LogBase& log);

private:
    phrases::Engine engine_;
    StringBuffer subject_;
    StringBuffer senderAddress_;
    StringBuffer senderName_;
    StringBuffer data_;
};

}  // namespace bouncecheck
