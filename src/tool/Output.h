#pragma once

#include <iosfwd>
#include <memory>

#include "tool/Classify.h"

namespace bouncecheck {

/// What messages are shown as, one after the other as they are classified.
class Output {
public:
    Output() = default;
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    virtual ~Output() = default;

    virtual void show(const Classified& message) = 0;
    /// Called once, after the last message.
    virtual void finish() {}
};

struct OutputParts {
    bool data = false;
    bool trace = false;
};

/// Columns for people, and a count by verdict at the end. Nothing from a
/// message can steer the terminal.
std::unique_ptr<Output> makeTableOutput(std::ostream& out, OutputParts parts);

/// One JSON object a line. Bytes that are not UTF-8 appear as U+FFFD.
std::unique_ptr<Output> makeJsonOutput(std::ostream& out, OutputParts parts);

}  // namespace bouncecheck
