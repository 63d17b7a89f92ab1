#include "ArrowColumn.h"

#include <limits>
#include <stdexcept>
#include <utility>

#include "text/Utf8.h"

namespace bouncecheck::python {
namespace {

bool hasOffsets(ArrowColumn::Kind kind) noexcept {
    using Kind = ArrowColumn::Kind;
    return kind == Kind::text || kind == Kind::bytes || kind == Kind::list;
}

}  // namespace

void Bits::append(bool bit) {
    if (size_ % 8 == 0) bytes_.push_back(0);
    bytes_.back() = static_cast<std::uint8_t>(bytes_.back() | (bit ? 1U : 0U) << size_ % 8);
    ++size_;
}

ArrowColumn::ArrowColumn(Kind kind, std::string name, bool isNullable,
                         std::vector<ArrowColumn> children)
    : kind_(kind), name_(std::move(name)), isNullable_(isNullable), children_(std::move(children)) {
    if (hasOffsets(kind)) offsets_.push_back(0);
}

void ArrowColumn::appendValidity(bool isValid) {
    validity_.append(isValid);
    ++size_;
    if (!isValid) ++nulls_;
}

/// Arrow's short offsets end at 2 GiB.
void ArrowColumn::pushOffset(std::size_t size) {
    if (size > std::numeric_limits<std::int32_t>::max()) {
        throw std::length_error("a column of Arrow would be larger than 2 GiB");
    }
    offsets_.push_back(static_cast<std::int32_t>(size));
}

void ArrowColumn::pushNumber(std::int64_t number) {
    if (kind_ == Kind::int32) {
        narrow_.push_back(static_cast<std::int32_t>(number));
    } else {
        wide_.push_back(number);
    }
}

void ArrowColumn::appendNull() {
    appendValidity(false);
    switch (kind_) {
        case Kind::text:
        case Kind::bytes:
        case Kind::list: offsets_.push_back(offsets_.back()); break;
        case Kind::int32:
        case Kind::int64:
        case Kind::time: pushNumber(0); break;
        case Kind::boolean: booleans_.append(false); break;
        case Kind::record:
            for (ArrowColumn& member : children_) member.appendNull();
            break;
    }
}

void ArrowColumn::appendText(std::string_view text) {
    appendWellFormed(text_, text);
    pushOffset(text_.size());
    appendValidity(true);
}

void ArrowColumn::appendBytes(std::string_view bytes) {
    text_ += bytes;
    pushOffset(text_.size());
    appendValidity(true);
}

void ArrowColumn::appendNumber(std::int64_t number) {
    pushNumber(number);
    appendValidity(true);
}

void ArrowColumn::appendBoolean(bool value) {
    booleans_.append(value);
    appendValidity(true);
}

void ArrowColumn::appendList() {
    pushOffset(static_cast<std::size_t>(children_.front().size()));
    appendValidity(true);
}

void ArrowColumn::appendRecord() { appendValidity(true); }

std::size_t ArrowColumn::textBytes() const noexcept {
    std::size_t bytes = text_.size();
    for (const ArrowColumn& child : children_) bytes += child.textBytes();
    return bytes;
}

std::vector<const void*> ArrowColumn::buffers() const {
    const void* validity = nulls_ > 0 ? validity_.data() : nullptr;
    switch (kind_) {
        case Kind::text:
        case Kind::bytes: return {validity, offsets_.data(), text_.data()};
        case Kind::list: return {validity, offsets_.data()};
        case Kind::int32: return {validity, narrow_.data()};
        case Kind::int64:
        case Kind::time: return {validity, wide_.data()};
        case Kind::boolean: return {validity, booleans_.data()};
        case Kind::record: break;
    }
    return {validity};
}

void RecordRow::textOrNull(std::string_view text) {
    ArrowColumn& column = next();
    if (text.empty()) {
        column.appendNull();
    } else {
        column.appendText(text);
    }
}

}  // namespace bouncecheck::python
