#include "mime/HeaderBlock.h"

#include "mime/LineEnds.h"

namespace bouncecheck {

HeaderBlock::HeaderBlock(std::string_view text) : text_(copyWithCrLf(text)) {
    const std::string_view lines = text_;
    fields_ = HeaderFields::ofMessage(lines.substr(HeaderFields::startIn(lines)));
}

}  // namespace bouncecheck
