#include "mime/MimeHeader.h"

#include "mime/LineEnds.h"
#include "text/Ascii.h"
#include "text/StringBuffer.h"

namespace bouncecheck {

void MimeHeader::loadMimeHeaderText(const char* text, const char* /*extra*/, int /*flags*/,
                                    StringBuffer& /*scratch*/, LogBase& /*log*/) {
    text_ = copyWithCrLf(ascii::viewOf(text));
    const std::string_view lines = text_;
    fields_ = HeaderFields::ofMessage(lines.substr(HeaderFields::startIn(lines)));
}

void MimeHeader::getMimeFieldUtf8_2(const char* name, unsigned int nameLen, StringBuffer& out,
                                    LogBase& /*log*/) const {
    if (!name) return;
    const HeaderField* field = fields_.find(std::string_view(name, nameLen));
    if (field) out.append(field->decoded());
}

}  // namespace bouncecheck
