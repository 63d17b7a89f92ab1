#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "ArrowInterface.h"

namespace bouncecheck::python {

/// A column of messages, read where it lies: binary or string, large or as views, or all null.
class ArrowMessages {
public:
    /// Refers to both, which have to be well-formed and to outlive it. Throws
    /// std::invalid_argument for a column of another type.
    ArrowMessages(const ArrowSchema& schema, const ArrowArray& array);

    std::int64_t size() const noexcept { return array_.length; }
    /// The bytes of the message in a row; nothing where it is null.
    std::optional<std::string_view> at(std::int64_t row) const noexcept;

private:
    enum class Layout { null, offsets32, offsets64, views };

    static Layout layoutOf(std::string_view format);

    const ArrowArray& array_;
    Layout layout_;
};

}  // namespace bouncecheck::python
