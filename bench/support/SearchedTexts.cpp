#include "bench/support/SearchedTexts.h"

#include <bouncecheck/LogNull.h>
#include <bouncecheck/classes/BounceCheck.h>
#include <bouncecheck/classes/Email2.h>

namespace bouncecheck::bench {

std::vector<std::string> searchedTexts(const std::vector<StoredMessage>& messages) {
    std::vector<std::string> texts;
    texts.reserve(2 * messages.size());
    BounceCheck check;
    LogNull log;
    for (const StoredMessage& message : messages) {
        Email2 email(message.bytes);
        StringBuffer address;
        StringBuffer data;
        StringBuffer subject;
        check.checkEmail(email, address, data, log);
        email.getSubjectUtf8(subject, log);
        texts.emplace_back(data.view());
        texts.emplace_back(subject.view());
    }
    return texts;
}

}  // namespace bouncecheck::bench
