#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bouncecheck::python {

/// Bits in a row, as Arrow packs them: the first is the lowest of its byte.
class Bits {
public:
    void append(bool bit);
    const std::uint8_t* data() const noexcept { return bytes_.data(); }

private:
    std::vector<std::uint8_t> bytes_;
    std::size_t size_ = 0;
};

/// A column of values in the memory layout of Arrow, which grows row by row, and the columns
/// inside of it. Offsets have 32 bits: a column has less than 2 GiB of text.
class ArrowColumn {
public:
    enum class Kind { text, bytes, int32, int64, boolean, time, list, record };

    /// A list has one child, a record one for each member.
    ArrowColumn(Kind kind, std::string name, bool isNullable,
                std::vector<ArrowColumn> children = {});

    /// A row that has no value, here and in the members of a record.
    void appendNull();
    /// UTF-8; what is none becomes U+FFFD.
    void appendText(std::string_view text);
    void appendBytes(std::string_view bytes);
    /// Of 32 or 64 bits; a time has microseconds since 1970-01-01 00:00 UTC.
    void appendNumber(std::int64_t number);
    void appendBoolean(bool value);
    /// The list of all that was appended to its child since the list before.
    void appendList();
    /// The record of what was appended to each of its children.
    void appendRecord();

    Kind kind() const noexcept { return kind_; }
    const std::string& name() const noexcept { return name_; }
    bool isNullable() const noexcept { return isNullable_; }
    std::int64_t size() const noexcept { return size_; }
    std::int64_t nulls() const noexcept { return nulls_; }
    std::vector<ArrowColumn>& children() noexcept { return children_; }
    const std::vector<ArrowColumn>& children() const noexcept { return children_; }
    /// How many bytes of text this column and those inside have.
    std::size_t textBytes() const noexcept;
    /// The memory that Arrow wants of this kind, the validity first; null where all are valid.
    std::vector<const void*> buffers() const;

private:
    void appendValidity(bool isValid);
    void pushOffset(std::size_t size);
    void pushNumber(std::int64_t number);

    Kind kind_;
    std::string name_;
    bool isNullable_;
    std::vector<ArrowColumn> children_;
    std::int64_t size_ = 0;
    std::int64_t nulls_ = 0;
    Bits validity_;
    /// Of texts and lists: where each ends. One more than rows.
    std::vector<std::int32_t> offsets_;
    std::string text_;
    Bits booleans_;
    std::vector<std::int32_t> narrow_;
    std::vector<std::int64_t> wide_;
};

/// Appends a row to a record, one member after the other in the order of the columns.
class RecordRow {
public:
    explicit RecordRow(ArrowColumn& record) noexcept : record_(record) {}

    ArrowColumn& next() { return record_.children()[at_++]; }
    void text(std::string_view text) { next().appendText(text); }
    /// What a message does not say is no text, rather than an empty one.
    void textOrNull(std::string_view text);
    void end() { record_.appendRecord(); }

private:
    ArrowColumn& record_;
    std::size_t at_ = 0;
};

}  // namespace bouncecheck::python
