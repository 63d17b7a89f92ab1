#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <map>
#include <nlohmann/json.hpp>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tool/Classify.h"

namespace bouncecheck {

/// Writes a JSON data block of an HTML page, which a script finds by its class. No '<' is in it
/// but those of its own tags, so that nothing in `json` ends the block.
void writeJsonBlock(std::ostream& out, std::string_view className, const std::string& json);

/// Texts by number, each kept once; "" is number 0.
class SharedTexts {
public:
    SharedTexts() { clear(); }

    /// The number of `text`, cut to `mostBytes` before an ellipsis.
    std::size_t add(std::string_view text, std::size_t mostBytes);
    /// A JSON array; what is not UTF-8 appears as U+FFFD.
    std::string json() const;
    std::size_t bytes() const noexcept { return bytes_; }
    void clear();

private:
    std::unordered_map<std::string, std::size_t> numbers_;
    /// Views of the keys, by number.
    std::vector<std::string_view> texts_;
    std::size_t bytes_ = 0;
};

/// A run of messages in an HTML page, as two JSON data blocks:
///
/// - "rows": what the table shows, a column each; texts by their number;
/// - "details": what a message unfolds to, a message each. The steps of a trace are a
///   shape, which many messages share, and the values that differ.
///
/// Each run has its texts to itself, so that it can be written when it is full and
/// forgotten, and read when one of its messages is unfolded.
class PageBlock {
public:
    PageBlock() { clear(); }

    void add(const Classified& message);
    bool isEmpty() const noexcept { return count_ == 0; }
    bool isFull() const noexcept;
    /// Writes the blocks and begins anew.
    void write(std::ostream& out);

private:
    void clear();
    void addRow(const Classified& message);
    void addSteps(std::span<const LogTrace::Event> events, nlohmann::ordered_json& detail);
    std::size_t shapeOf(std::span<const LogTrace::Event> events, std::size_t deciding);
    nlohmann::ordered_json excerptLines(const Classified& message, std::string_view phrase);
    void addFacts(const Facts& facts, nlohmann::ordered_json& detail);
    std::size_t text(std::string_view text);

    std::size_t count_ = 0;
    SharedTexts rowTexts_;
    nlohmann::ordered_json rows_;
    SharedTexts texts_;
    std::map<std::vector<std::size_t>, std::size_t> shapeNumbers_;
    /// The elements of JSON arrays.
    std::string shapes_;
    std::string details_;
};

}  // namespace bouncecheck
