#include <bouncecheck/Verdict.h>

#include "text/Search.h"

namespace bouncecheck {

std::size_t Verdict::phrasePlace() const {
    const bool isElsewhere = match.text == TextOf::subject || match.text == TextOf::senderAddress ||
                             match.text == TextOf::senderName;
    const std::string_view phrase = match.phrase;
    if (isElsewhere || phrase.empty()) return npos;
    return findBytes(text.view(), phrase, 0, match.letters);
}

std::size_t Verdict::addressPlace() const {
    if (address.empty()) return npos;
    const std::size_t behind = marker ? findBytes(text.view(), marker.phrase) : 0;
    return findBytesNoCase(text.view(), address, behind == npos ? 0 : behind);
}

}  // namespace bouncecheck
