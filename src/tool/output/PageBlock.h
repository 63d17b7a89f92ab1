#pragma once

#include <array>
#include <cstddef>
#include <iosfwd>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <tuple>

#include "tool/Classify.h"
#include "tool/output/SharedTexts.h"

namespace bouncecheck {

/// Writes a JSON data block of an HTML page, which a script finds by its class. No '<' is in it
/// but those of its own tags, so that nothing in `json` ends the block.
void writeJsonBlock(std::ostream& out, std::string_view className, std::string_view json);

/// A run of messages in an HTML page, as two JSON data blocks:
///
/// - "rows": what the table shows and the search finds, a column each; texts by their number.
///   Some columns have an entry for each message, one of them how many rows it has: one for
///   each recipient, and one when there is none. The others have an entry for each row;
/// - "details": what a message unfolds to, a message each. The steps of a trace are a
///   shape, which many messages share, and the values that differ.
///
/// What a single message adds is bounded but for its recipients, all of which have a row;
/// `limits::recipients` bounds them.
///
/// Each run has its texts to itself, so that it can be written when it is full and
/// forgotten, and read when one of its messages is unfolded.
class PageBlock {
public:
    /// When memory runs out, std::bad_alloc is thrown and nothing of the message added.
    void add(const Classified& message);
    bool isEmpty() const noexcept { return count_ == 0; }
    bool isFull() const noexcept;
    /// Writes the blocks and begins anew, without another allocation.
    void write(std::ostream& out);

private:
    /// The columns of messages, then those of rows: elements of JSON arrays, in the order of
    /// `columnNames`.
    using Columns = std::array<std::string, 16>;
    static const std::array<std::string_view, std::tuple_size_v<Columns>> columnNames;

    void clear() noexcept;
    Columns rowsOf(const Classified& message);
    std::string detailOf(const Classified& message);
    void addSteps(const Classified& message, std::string& detail);
    std::size_t shapeOf(std::span<const LogTrace::Event> events, std::size_t deciding);
    std::string excerptLines(const Classified& message);
    void addRecipients(const Classified& message, std::string& detail);
    void addFacts(const Classified& message, std::string& detail);
    std::string number(std::string_view text);

    std::size_t count_ = 0;
    SharedTexts rowTexts_;
    SharedTexts texts_;
    /// By their JSON.
    std::map<std::string, std::size_t> shapeNumbers_;
    // The elements of JSON arrays.
    Columns columns_;
    std::string shapes_;
    std::string details_;
};

}  // namespace bouncecheck
