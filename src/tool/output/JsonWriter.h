#pragma once

#include <iosfwd>

#include "tool/output/JsonText.h"

namespace bouncecheck {

/// Writes JSON to a stream, with a few KB in memory.
class JsonWriter final : public JsonText {
public:
    /// `out` must outlive it.
    explicit JsonWriter(std::ostream& out) : out_(out) {}

    /// Ends a value that is a line of its own, and hands all to the stream.
    void endLine();
    /// Forgets a value that could not be completed. A line that is partly in the stream
    /// ends there, so that the next one can be read.
    void abandonLine();

private:
    // What was made is the stream's.
    using JsonText::take;
    void grown() override;
    void flush();

    std::ostream& out_;
    /// Whether the stream has part of a line.
    bool isPartlyOut_ = false;
};

}  // namespace bouncecheck
