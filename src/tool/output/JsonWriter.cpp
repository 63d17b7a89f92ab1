#include "tool/output/JsonWriter.h"

#include <cstddef>
#include <ostream>

namespace bouncecheck {

void JsonWriter::endLine() {
    text_ += '\n';
    needsComma_ = false;
    flush();
    isPartlyOut_ = false;
}

void JsonWriter::abandonLine() {
    text_.clear();
    needsComma_ = false;
    if (isPartlyOut_) out_ << '\n';
    isPartlyOut_ = false;
}

void JsonWriter::grown() {
    constexpr std::size_t mostInMemory = 65536;
    if (text_.size() >= mostInMemory) flush();
}

void JsonWriter::flush() {
    out_ << text_;
    isPartlyOut_ = true;
    text_.clear();
}

}  // namespace bouncecheck
