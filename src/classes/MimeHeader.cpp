#include <bouncecheck/classes/MimeHeader.h>

#include <bouncecheck/classes/StringBuffer.h>
#include "mime/HeaderBlock.h"
#include "text/Ascii.h"

namespace bouncecheck {

MimeHeader::MimeHeader() = default;
MimeHeader::~MimeHeader() = default;

void MimeHeader::loadMimeHeaderText(const char* text, const char* /*extra*/, int /*flags*/,
                                    StringBuffer& /*scratch*/, LogBase& /*log*/) {
    block_ = std::make_unique<const HeaderBlock>(ascii::viewOf(text));
}

void MimeHeader::getMimeFieldUtf8_2(const char* name, unsigned int nameLen, StringBuffer& out,
                                    LogBase& /*log*/) const {
    if (name && block_) out.append(block_->field(std::string_view(name, nameLen)));
}

}  // namespace bouncecheck
