#include <bouncecheck/bouncecheck_c.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <bouncecheck/bouncecheck.h>

#include "c/Structures.h"

namespace bouncecheck {
namespace {

/// What was found in one message. The texts that are handed out are its own.
struct Result {
    Message message;
    Verdict verdict{};
    std::string trace{};
    std::vector<Recipient> recipients{};
    Facts facts{};
    /// The fields that were asked for.
    std::map<std::string, std::string, std::less<>> fields{};
};

}  // namespace
}  // namespace bouncecheck

using namespace bouncecheck;

struct bouncecheck_classifier {
    Classifier classifier;
    std::vector<VerpPattern> verp;
    /// Null before the first message, and after one that could not be classified.
    std::unique_ptr<Result> result;
};

namespace {

constexpr unsigned knownBits = BOUNCECHECK_RECIPIENTS | BOUNCECHECK_FACTS | BOUNCECHECK_TRACE;

/// The status of `work`. It throws only where memory cannot hold something.
template <class Work>
bouncecheck_status guarded(Work work) noexcept {
    try {
        return work();
    } catch (...) {
        return BOUNCECHECK_OUT_OF_MEMORY;
    }
}

/// The bytes that a caller names; nothing where there cannot be any.
std::optional<std::string_view> viewOf(const void* bytes, std::size_t size) noexcept {
    if (size == 0) return std::string_view();
    if (!bytes || size > PTRDIFF_MAX) return std::nullopt;
    return std::string_view(static_cast<const char*>(bytes), size);
}

/// Fills what a caller has of a structure: `size` bytes.
template <class Structure>
void fill(void* out, std::size_t size, const Structure& value) noexcept {
    const std::size_t known = std::min(size, sizeof value);
    std::memcpy(out, &value, known);
    std::memset(static_cast<char*>(out) + known, 0, size - known);
}

/// Fills `out` with what `read` finds in the last result, or with `empty` when it finds nothing.
template <class Structure, class Read>
bouncecheck_status handOut(const bouncecheck_classifier* classifier, Structure* out,
                           std::size_t size, const Structure& empty, Read read) noexcept {
    if (!out || size == 0 || size > PTRDIFF_MAX) return BOUNCECHECK_BAD_ARGUMENT;
    fill(out, size, empty);
    if (!classifier) return BOUNCECHECK_BAD_ARGUMENT;
    if (!classifier->result) return BOUNCECHECK_NO_RESULT;
    return guarded([&] {
        const std::optional<Structure> found = read(*classifier->result);
        if (!found) return BOUNCECHECK_OUT_OF_RANGE;
        fill(out, size, *found);
        return BOUNCECHECK_OK;
    });
}

/// Of no message.
bouncecheck_verdict emptyVerdict() noexcept {
    bouncecheck_verdict verdict = structureOf(Verdict());
    verdict.meaning = verdict.advice = textOfLiteral("");
    return verdict;
}

/// Finds out about `result.message` what is asked for.
void findOut(Result& result, Classifier& classifier, const std::vector<VerpPattern>& verp,
             unsigned what) {
    if ((what & BOUNCECHECK_TRACE) != 0) {
        LogTrace log;
        result.verdict = classifier.classify(result.message, log);
        result.trace = traceTree(log.events());
    } else {
        result.verdict = classifier.classify(result.message);
    }
    if ((what & BOUNCECHECK_RECIPIENTS) != 0)
        result.recipients = recipientsOf(result.message, verp);
    if ((what & BOUNCECHECK_FACTS) != 0) result.facts = factsOf(result.message);
}

}  // namespace

bouncecheck_status bouncecheck_classifier_new(bouncecheck_classifier** made) {
    if (!made) return BOUNCECHECK_BAD_ARGUMENT;
    *made = nullptr;
    return guarded([&] {
        *made = std::make_unique<bouncecheck_classifier>().release();
        return BOUNCECHECK_OK;
    });
}

void bouncecheck_classifier_free(bouncecheck_classifier* classifier) {
    std::unique_ptr<bouncecheck_classifier>{classifier};
}

bouncecheck_status bouncecheck_add_verp(bouncecheck_classifier* classifier, const char* pattern,
                                        size_t size) {
    const auto text = viewOf(pattern, size);
    if (!classifier || !text) return BOUNCECHECK_BAD_ARGUMENT;
    return guarded([&] {
        auto parsed = VerpPattern::parse(*text);
        if (!parsed) return BOUNCECHECK_BAD_PATTERN;
        classifier->verp.push_back(std::move(*parsed));
        return BOUNCECHECK_OK;
    });
}

bouncecheck_status bouncecheck_classify(bouncecheck_classifier* classifier, const void* bytes,
                                        size_t size, unsigned what) {
    if (!classifier) return BOUNCECHECK_BAD_ARGUMENT;
    // The bytes may be a text of the last result.
    std::unique_ptr<Result> before = std::move(classifier->result);
    const auto text = viewOf(bytes, size);
    if (!text || (what & ~knownBits) != 0) return BOUNCECHECK_BAD_ARGUMENT;
    return guarded([&] {
        auto result = std::make_unique<Result>(Result{.message = Message(*text)});
        before.reset();
        findOut(*result, classifier->classifier, classifier->verp, what);
        classifier->result = std::move(result);
        return BOUNCECHECK_OK;
    });
}

bouncecheck_status bouncecheck_get_verdict(const bouncecheck_classifier* classifier,
                                           bouncecheck_verdict* verdict, size_t verdict_size) {
    return handOut(classifier, verdict, verdict_size, emptyVerdict(),
                   [](const Result& result) { return std::optional(structureOf(result.verdict)); });
}

bouncecheck_status bouncecheck_get_evidence(const bouncecheck_classifier* classifier,
                                            bouncecheck_evidence* evidence, size_t evidence_size) {
    const bouncecheck_evidence none{.data = textOfLiteral(""),
                                    .phrase_place = BOUNCECHECK_NOWHERE,
                                    .address_place = BOUNCECHECK_NOWHERE};
    return handOut(classifier, evidence, evidence_size, none,
                   [](const Result& result) { return std::optional(evidenceOf(result.verdict)); });
}

bouncecheck_status bouncecheck_get_trace(const bouncecheck_classifier* classifier,
                                         bouncecheck_text* trace) {
    return handOut(classifier, trace, sizeof *trace, textOfLiteral(""),
                   [](const Result& result) { return std::optional(textOf(result.trace)); });
}

size_t bouncecheck_recipient_count(const bouncecheck_classifier* classifier) {
    return classifier && classifier->result ? classifier->result->recipients.size() : 0;
}

bouncecheck_status bouncecheck_get_recipient(const bouncecheck_classifier* classifier, size_t index,
                                             bouncecheck_recipient* recipient,
                                             size_t recipient_size) {
    return handOut(classifier, recipient, recipient_size, structureOf(Recipient()),
                   [index](const Result& result) -> std::optional<bouncecheck_recipient> {
                       if (index >= result.recipients.size()) return std::nullopt;
                       return structureOf(result.recipients[index]);
                   });
}

bouncecheck_status bouncecheck_get_facts(const bouncecheck_classifier* classifier,
                                         bouncecheck_facts* facts, size_t facts_size) {
    return handOut(classifier, facts, facts_size, structureOf(Facts()),
                   [](const Result& result) { return std::optional(structureOf(result.facts)); });
}

size_t bouncecheck_report_field_count(const bouncecheck_classifier* classifier) {
    return classifier && classifier->result ? classifier->result->facts.report.size() : 0;
}

bouncecheck_status bouncecheck_get_report_field(const bouncecheck_classifier* classifier,
                                                size_t index, bouncecheck_report_field* field,
                                                size_t field_size) {
    return handOut(classifier, field, field_size, structureOf(ReportField()),
                   [index](const Result& result) -> std::optional<bouncecheck_report_field> {
                       if (index >= result.facts.report.size()) return std::nullopt;
                       return structureOf(result.facts.report[index]);
                   });
}

bouncecheck_status bouncecheck_get_field(bouncecheck_classifier* classifier, const char* name,
                                         size_t name_size, bouncecheck_text* value) {
    const auto text = viewOf(name, name_size);
    return handOut(
        text ? classifier : nullptr, value, sizeof *value, textOfLiteral(""),
        [&text](Result& result) {
            auto field = result.fields.find(*text);
            if (field == result.fields.end()) {
                field =
                    result.fields.emplace(std::string(*text), result.message.field(*text)).first;
            }
            return std::optional(textOf(field->second));
        });
}
