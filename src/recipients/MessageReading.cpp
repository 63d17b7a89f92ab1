#include "recipients/MessageReading.h"

#include <bouncecheck/Limits.h>
#include "mime/Entity.h"
#include "mime/ReportBodies.h"
#include "reasons/ReplyCodes.h"
#include "reasons/Stage.h"
#include "recipients/SenderRefusal.h"

namespace bouncecheck {

Author MessageReading::author() const {
    if (!author_) author_ = authorOf(message_);
    return *author_;
}

const Notice& MessageReading::notice() const {
    return notice_ ? *notice_ : notice_.emplace(message_);
}

bool MessageReading::subjectSaysTrouble() const {
    if (!subjectSaysTrouble_) subjectSaysTrouble_ = saysTrouble(message_.field("Subject"));
    return *subjectSaysTrouble_;
}

bool MessageReading::isNotice() const {
    if (!isNotice_) {
        isNotice_ = isBySystem() ||
                    (codesIn(notice().text()).reply.starts_with('5') && !isDiscussion(message_));
    }
    return *isNotice_;
}

std::string_view MessageReading::firstText() const {
    const Entity* text = message_.findType("text/plain");
    return text ? text->body().view().substr(0, limits::notice) : std::string_view();
}

bool MessageReading::saysReplyToData() const {
    if (!saysReplyToData_) saysReplyToData_ = stageIn(firstText()) == Stage::data;
    return *saysReplyToData_;
}

bool MessageReading::saysReplyToSender() const {
    if (!saysReplyToSender_) saysReplyToSender_ = refusesSender(firstText());
    return *saysReplyToSender_;
}

const ReturnedMail& MessageReading::attached() const {
    return attached_ ? *attached_
                     : attached_.emplace(bodyOf(message_, ReportKind::message, ReportKind::header));
}

const ReturnedMail& MessageReading::returned() const {
    if (attached().isFound()) return attached();
    return inNotice_ ? *inNotice_ : inNotice_.emplace(notice().returned());
}

}  // namespace bouncecheck
