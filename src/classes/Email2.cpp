#include <bouncecheck/classes/Email2.h>

#include <array>
#include <utility>

#include <bouncecheck/LogBase.h>
#include <bouncecheck/classes/StringBuffer.h>
#include <bouncecheck/classes/SystemCerts.h>
#include <bouncecheck/classes/XString.h>
#include "mime/Entity.h"
#include "text/Ascii.h"
#include "text/Search.h"

namespace bouncecheck {

Email2::Email2() : Email2(std::make_unique<const Entity>()) {}
Email2::Email2(std::string_view rawMessage) : Email2(std::make_unique<const Entity>(rawMessage)) {}
Email2::Email2(std::string&& rawMessage)
    : Email2(std::make_unique<const Entity>(std::move(rawMessage))) {}
Email2::Email2(const char* rawMessage) : Email2(ascii::viewOf(rawMessage)) {}
Email2::Email2(const Entity& part) noexcept : entity_(&part) {}
Email2::Email2(std::unique_ptr<const Entity> message) noexcept
    : own_(std::move(message)), entity_(own_.get()) {}
Email2::~Email2() = default;

const Entity& entityOf(const Email2& email) noexcept { return *email.entity_; }

// --- Structure -------------------------------------------------------------

bool Email2::isMultipartMixed() const noexcept { return entity_->is("multipart/mixed"); }
bool Email2::isMultipartReport() const noexcept { return entity_->is("multipart/report"); }
void Email2::getContentType(StringBuffer& out) const { out.append(entity_->type()); }
int Email2::getNumParts() const noexcept { return static_cast<int>(entity_->partCount()); }

Email2* Email2::getPart(int index) const {
    if (index < 0 || index >= getNumParts()) return nullptr;
    const auto at = static_cast<std::size_t>(index);
    parts_.resize(entity_->partCount());
    if (!parts_[at]) parts_[at].reset(new Email2(*entity_->part(at)));
    return parts_[at].get();
}

Email2* Email2::findContentType(const char* contentType) {
    if (entity_->is(ascii::lowerCase(ascii::viewOf(contentType)))) return this;
    for (int i = 0; i < getNumParts(); ++i) {
        if (Email2* found = getPart(i)->findContentType(contentType)) return found;
    }
    return nullptr;
}

const Email2* Email2::findContentType(const char* contentType) const {
    if (entity_->is(ascii::lowerCase(ascii::viewOf(contentType)))) return this;
    for (int i = 0; i < getNumParts(); ++i) {
        if (const Email2* found = getPart(i)->findContentType(contentType)) return found;
    }
    return nullptr;
}

// --- Header ----------------------------------------------------------------

void Email2::getHeaderFieldUtf8(const char* name, StringBuffer& out, LogBase&) const {
    out.append(entity_->field(ascii::viewOf(name)));
}

bool Email2::hasHeaderMatchingUtf8(const char* name, const char* value, bool ignoreCase,
                                   LogBase&) const {
    return entity_->hasFieldMatching(ascii::viewOf(name), ascii::viewOf(value),
                                     letterCase(ignoreCase));
}

void Email2::getFromAddrUtf8(StringBuffer& out) const { out.append(entity_->from().address); }

void Email2::getFromNameUtf8(StringBuffer& out, LogBase&) const {
    out.append(entity_->from().name);
}

void Email2::getSubjectUtf8(StringBuffer& out, LogBase&) const {
    out.append(entity_->field("Subject"));
}

void Email2::getRecipientAddrUtf8(int kind, int index, StringBuffer& out) const {
    constexpr std::array<std::string_view, 3> fields = {"To", "Cc", "Bcc"};
    if (kind < 1 || kind > 3 || index < 0) return;
    out.append(entity_->recipient(fields[static_cast<std::size_t>(kind - 1)],
                                  static_cast<std::size_t>(index)));
}

// --- Bodies ----------------------------------------------------------------

DataBuffer* Email2::getNonMultipartBody3() const {
    if (!entity_->isLeaf()) return nullptr;
    if (!body_) {
        body_ = std::make_unique<DataBuffer>();
        body_->append(entity_->body());
    }
    return body_.get();
}

void Email2::getNonMultipartBodyData(DataBuffer& out) const { out.append(entity_->body()); }

void Email2::getRawBodyThisPart(DataBuffer& out) const { out.append(entity_->rawBody()); }

void Email2::getPlainTextBodyUtf8(const Email2& email, StringBuffer& out, LogBase&) const {
    out.append(email.entity_->plainText());
}

void Email2::getEffectiveBodyData(const Email2& email, DataBuffer& out, LogBase&) const {
    out.append(email.entity_->effectiveBody());
}

// --- Reports and attached messages -------------------------------------------

void Email2::getDeliveryStatusInfo(const char* name, XString& out, LogBase&) const {
    const HeaderField* field = entity_->reportFields().find(ascii::viewOf(name));
    if (field) out.appendUtf8(field->decoded());
}

void Email2::getDeliveryStatusContent(XString& out, LogBase&) const {
    if (const Entity* report = entity_->report()) out.appendUtf8(report->body());
}

Email2* Email2::getAttachedMessage(int index, int& status, SystemCerts&, LogBase&) const {
    auto attached = index < 0 ? nullptr : entity_->attached(static_cast<std::size_t>(index));
    status = attached ? 1 : 0;
    return attached ? new Email2(std::move(attached)) : nullptr;
}

}  // namespace bouncecheck
