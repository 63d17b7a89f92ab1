#pragma once

#include <string>
#include <string_view>

#include "mime/HeaderFields.h"

namespace bouncecheck {

/// A block of header lines on its own, such as a returned header.
class HeaderBlock {
public:
    HeaderBlock() = default;
    /// Copies `text`, whose line ends may be any. What stands before the header of a
    /// message is passed over; see HeaderFields::startIn.
    explicit HeaderBlock(std::string_view text);
    HeaderBlock(const HeaderBlock&) = delete;
    HeaderBlock& operator=(const HeaderBlock&) = delete;

    const HeaderFields& fields() const noexcept { return fields_; }
    /// The first field of that name, as a person reads it; "" when there is none.
    std::string field(std::string_view name) const {
        const HeaderField* field = fields_.find(name);
        return field ? field->decoded() : std::string();
    }

private:
    /// The fields refer into it.
    std::string text_;
    HeaderFields fields_;
};

}  // namespace bouncecheck
