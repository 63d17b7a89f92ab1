#include "reasons/GivenCodes.h"

#include "reasons/CodeReasons.h"
#include "reasons/Reply.h"

namespace bouncecheck {
namespace {

/// Whether a vague code for one reason says more than a hint at another. Policy and a system at
/// fault are what such codes stand for where there is no better one.
bool countsBefore(Reason code, Reason hint) noexcept {
    if (code == hint || code == Reason::system) return false;
    return code != Reason::policy || hint == Reason::unknownMailbox;
}

}  // namespace

GivenCodes::GivenCodes(const Reply& reply)
    : inText_(reply.codes ? *reply.codes : codesIn(reply.text)),
      reply_(inText_.reply.empty() ? reply.replyCode : inText_.reply),
      field_(reply.status),
      ofText_(statusRowOf(inText_.status)),
      ofField_(field_ == inText_.status ? ofText_ : statusRowOf(field_)) {}

bool GivenCodes::areTemporary() const noexcept {
    if (!reply_.empty()) return isTemporary(reply_);
    return isTemporary(inText_.status.empty() ? field_ : inText_.status);
}

const StatusRow* GivenCodes::definite() const noexcept {
    if (ofText_ && ofText_->trust == Trust::definite) return ofText_;
    const bool counts = ofField_ && ofField_->trust == Trust::definite && !fieldRestatesReply();
    return counts ? ofField_ : nullptr;
}

const StatusRow* GivenCodes::any() const noexcept {
    if (ofText_ && ofText_->reason != Reason::other) return ofText_;
    return ofField_ && ofField_->reason != Reason::other ? ofField_ : nullptr;
}

bool GivenCodes::isRestated(const StatusRow* row) const noexcept {
    return row == ofField_ && fieldRestatesReply();
}

bool GivenCodes::sayMore(const StatusRow& vague, const PhraseRow& hint) const noexcept {
    // "451 4.3.0 rejected": a fault, for the time being, where the words are only a refusal.
    const bool isFault = areTemporary() && vague.reason == Reason::system;
    return countsBefore(vague.reason, hint.reason) || (isFault && hint.reason == Reason::policy);
}

bool GivenCodes::areAboutElse(Reason reason) const noexcept {
    if (!isAboutMailbox(reason)) return false;
    if (areAboutLogin()) return true;
    const StatusRow* row = definite();
    const bool isCommand = ofText_ && ofText_->code.starts_with("X.5.") && ofText_->code != "X.5.0";
    return isCommand || (row && !isAboutMailbox(row->reason));
}

bool GivenCodes::areAboutLogin() const noexcept {
    return reply_ == "530" || reply_ == "534" || reply_ == "535";
}

bool GivenCodes::areAboutSender() const noexcept {
    return ofText_ && (ofText_->code == "X.1.7" || ofText_->code == "X.1.8");
}

bool GivenCodes::fieldRestatesReply() const noexcept {
    return inText_.status.empty() && !reply_.empty() && restates(field_, reply_);
}

}  // namespace bouncecheck
