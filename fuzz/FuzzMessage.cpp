// The message model: every operation on every entity.

#include <algorithm>

#include <bouncecheck/Limits.h>
#include <bouncecheck/LogNull.h>
#include <bouncecheck/classes/Email2.h>
#include <bouncecheck/classes/MimeHeader.h>
#include <bouncecheck/classes/SystemCerts.h>
#include <bouncecheck/classes/XString.h>
#include "fuzz/Input.h"
#include "fuzz/Require.h"
#include "mime/Entity.h"
#include "text/Utf8.h"

namespace bouncecheck::fuzz {
namespace {

LogNull noLog;

bool hasCrLfOnly(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isCr = text[i] == '\r';
        if (isCr && (i + 1 == text.size() || text[i + 1] != '\n')) return false;
        if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) return false;
    }
    return true;
}

std::string headerAnswers(const Email2& email) {
    StringBuffer all;
    email.getSubjectUtf8(all, noLog);
    email.getFromAddrUtf8(all);
    email.getFromNameUtf8(all, noLog);
    for (int kind = 0; kind <= 4; ++kind) {
        for (const int index : {-1, 0, 2}) email.getRecipientAddrUtf8(kind, index, all);
    }
    for (const char* name : {"X-Any", "content-type", ""})
        email.getHeaderFieldUtf8(name, all, noLog);
    require(isUtf8(all.view()), "header text is UTF-8");
    if (email.hasHeaderMatchingUtf8("X-Any", "*a*b", true, noLog)) all.append("match");
    return std::string(all.view());
}

std::string bodyAnswers(const Email2& email) {
    DataBuffer all;
    if (const DataBuffer* body = email.getNonMultipartBody3()) {
        require(email.getNumParts() == 0, "only leaves have a body");
        require(!entityOf(email).type().starts_with("text/") || hasCrLfOnly(body->view()),
                "the lines of text end in CRLF");
    } else {
        require(email.getNumParts() > 0, "an entity without body has parts");
    }
    email.getNonMultipartBodyData(all);
    email.getRawBodyThisPart(all);
    StringBuffer plain;
    email.getPlainTextBodyUtf8(email, plain, noLog);
    all.append(plain.view());
    email.getEffectiveBodyData(email, all, noLog);
    XString report;
    email.getDeliveryStatusInfo("Action", report, noLog);
    email.getDeliveryStatusContent(report, noLog);
    all.append(report.view());
    return std::string(all.view());
}

/// What the entities of the tree answer, parts after what holds them.
std::string answers(const Email2& email, std::size_t depth, std::size_t& entities) {
    require(depth <= limits::nesting, "the tree is no deeper than the limit");
    ++entities;
    std::string all =
        std::string(entityOf(email).type()) + headerAnswers(email) + bodyAnswers(email);
    for (int i = 0; i < email.getNumParts(); ++i)
        all += answers(*email.getPart(i), depth + 1, entities);
    require(!email.getPart(-1) && !email.getPart(email.getNumParts()), "no part outside");
    return all;
}

std::string allAnswers(const Email2& email) {
    std::size_t entities = 0;
    const std::string all = answers(email, 0, entities);
    require(entities <= limits::parts + 1, "there are no more parts than the limit");
    return all;
}

void tryAttached(const Email2& email) {
    SystemCerts certs;
    int status = 0;
    const std::unique_ptr<Email2, BrixelDeleter> attached(
        email.getAttachedMessage(0, status, certs, noLog));
    require((attached != nullptr) == (status == 1), "the status says whether there is a message");
    if (attached) headerAnswers(*attached);
}

void tryHeader(const std::string& text) {
    MimeHeader header;
    StringBuffer scratch;
    StringBuffer to;
    header.loadMimeHeaderText(text.c_str(), nullptr, 0, scratch, noLog);
    header.getMimeFieldUtf8_2("To", 2, to, noLog);
    require(isUtf8(to.view()), "a returned header is UTF-8");
}

}  // namespace
}  // namespace bouncecheck::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace bouncecheck::fuzz;
    const std::string text(Input(data, size).rest());
    const bouncecheck::Email2 email(text);
    const std::string first = allAnswers(email);
    require(allAnswers(email) == first, "asked again, a message answers the same");
    require(allAnswers(bouncecheck::Email2(text)) == first, "read again, it answers the same");
    tryAttached(email);
    tryHeader(text);
    return 0;
}
