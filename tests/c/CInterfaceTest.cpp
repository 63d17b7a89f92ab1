#include <bouncecheck/bouncecheck_c.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include <bouncecheck/bouncecheck.h>

extern "C" std::size_t count_suppressed(const void* mail, std::size_t size);

namespace bouncecheck {
namespace {

constexpr unsigned everything = BOUNCECHECK_RECIPIENTS | BOUNCECHECK_FACTS | BOUNCECHECK_TRACE;
const std::string fullMailbox =
    "From: MAILER-DAEMON@mx.example\nSubject: Mail delivery failed\n\n"
    "The following address(es) failed:\n\n  ann@example.com\n    mailbox is full\n";

struct Free {
    void operator()(bouncecheck_classifier* it) const { bouncecheck_classifier_free(it); }
};
using Handle = std::unique_ptr<bouncecheck_classifier, Free>;

Handle handle() {
    bouncecheck_classifier* made = nullptr;
    EXPECT_EQ(bouncecheck_classifier_new(&made), BOUNCECHECK_OK);
    return Handle(made);
}

bouncecheck_status classify(const Handle& by, std::string_view mail, unsigned what = everything) {
    return bouncecheck_classify(by.get(), mail.data(), mail.size(), what);
}

/// What a call fills a structure with, none of which was there before.
template <class Structure, class Get, class... Index>
Structure got(const Handle& from, Get get, bouncecheck_status status, Index... index) {
    Structure out;
    std::memset(&out, 0x55, sizeof out);
    EXPECT_EQ(get(from.get(), index..., &out, sizeof out), status);
    return out;
}
bouncecheck_verdict verdictOf(const Handle& from, bouncecheck_status status = BOUNCECHECK_OK) {
    return got<bouncecheck_verdict>(from, bouncecheck_get_verdict, status);
}
bouncecheck_evidence evidenceOf(const Handle& from) {
    return got<bouncecheck_evidence>(from, bouncecheck_get_evidence, BOUNCECHECK_OK);
}
bouncecheck_recipient recipientOf(const Handle& from, std::size_t index,
                                  bouncecheck_status status = BOUNCECHECK_OK) {
    return got<bouncecheck_recipient>(from, bouncecheck_get_recipient, status, index);
}
bouncecheck_text traceOf(const Handle& from) {
    bouncecheck_text trace = {nullptr, 1};
    EXPECT_EQ(bouncecheck_get_trace(from.get(), &trace), BOUNCECHECK_OK);
    return trace;
}

std::string_view view(bouncecheck_text text) {
    EXPECT_EQ(text.bytes[text.size], '\0');
    return {text.bytes, text.size};
}

using Row = std::vector<std::string>;
template <class... Cells>
Row row(const Cells&... cells) {
    const auto text = [](const auto& cell) {
        if constexpr (std::is_same_v<std::decay_t<decltype(cell)>, bouncecheck_text>) {
            return std::string(view(cell));
        } else if constexpr (std::is_convertible_v<decltype(cell), std::string_view>) {
            return std::string(std::string_view(cell));
        } else {
            return std::to_string(static_cast<std::size_t>(cell));
        }
    };
    return {text(cells)...};
}

Row row(const bouncecheck_match& it) { return row(it.table, it.row, it.phrase, it.found_in); }
Row row(const Match& it) { return row(it.table, it.row, it.phrase, it.text); }

Row row(const bouncecheck_recipient& it) {
    return row(it.address, it.final_address, it.tag, it.outcome, it.reason, it.advice, it.source,
               it.status, it.reply_code, it.diagnostic, it.remote_mta, it.last_attempt,
               it.will_retry_until, it.row, it.quote, it.basis);
}
Row row(const Recipient& it) {
    return row(it.address, it.finalAddress, it.tag, it.outcome, it.reason, it.advice, it.source,
               it.status, it.replyCode, it.diagnostic, it.remoteMta, it.lastAttempt,
               it.willRetryUntil, it.row, it.quote, it.basis);
}

/// Everything that C says of the message before equals what C++ says of it.
void expectSame(const Handle& c, const Message& message) {
    LogTrace log;
    const Verdict verdict = Classifier().classify(message, log);
    const bouncecheck_verdict in_c = verdictOf(c);
    EXPECT_EQ(row(in_c.type, in_c.address_source, in_c.address, in_c.label),
              row(verdict.type, verdict.addressSource, verdict.address, verdict.label()));
    EXPECT_EQ(view(in_c.meaning),
              verdict.rule ? verdict.rule->meaning : verdictTypeOf(verdict.type)->meaning);
    EXPECT_EQ(view(in_c.advice), adviceFor(verdict.type, verdict.rule));
    EXPECT_EQ(row(in_c.match), row(verdict.match));
    EXPECT_EQ(row(in_c.pattern), row(verdict.pattern));
    EXPECT_EQ(row(in_c.marker), row(verdict.marker));
    const bouncecheck_evidence evidence = evidenceOf(c);
    EXPECT_EQ(row(evidence.data, evidence.phrase_place, evidence.address_place),
              row(verdict.text.view(), verdict.phrasePlace(), verdict.addressPlace()));
    EXPECT_EQ(view(traceOf(c)), traceTree(log.events()));

    const std::vector<Recipient> recipients = recipientsOf(message);
    ASSERT_EQ(bouncecheck_recipient_count(c.get()), recipients.size());
    for (std::size_t i = 0; i < recipients.size(); ++i) {
        EXPECT_EQ(row(recipientOf(c, i)), row(recipients[i]));
    }
    const Facts facts = factsOf(message);
    const auto f = got<bouncecheck_facts>(c, bouncecheck_get_facts, BOUNCECHECK_OK);
    const ReturnedMessage& r = facts.returned;
    EXPECT_EQ(row(f.reporting_mta, f.returned_message_id, f.returned_from, f.returned_to,
                  f.returned_subject, f.returned_date, f.returned_list_id, f.returned_return_path),
              row(facts.reportingMta, r.messageId, r.from, r.to, r.subject, r.date, r.listId,
                  r.returnPath));
    ASSERT_EQ(bouncecheck_report_field_count(c.get()), facts.report.size());
    for (std::size_t i = 0; i < facts.report.size(); ++i) {
        const auto field =
            got<bouncecheck_report_field>(c, bouncecheck_get_report_field, BOUNCECHECK_OK, i);
        EXPECT_EQ(row(field.name, field.value), row(facts.report[i].name, facts.report[i].value));
    }
}

TEST(CInterface, SaysWhatCppSays) {
    const Handle c = handle();
    for (const auto& entry : std::filesystem::directory_iterator(SAMPLES_DIR)) {
        SCOPED_TRACE(entry.path().filename().string());
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string mail(std::istreambuf_iterator<char>(file), {});
        EXPECT_EQ(classify(c, mail), BOUNCECHECK_OK);
        expectSame(c, Message(mail));
    }
}

TEST(CInterface, FindsOnlyWhatIsAskedFor) {
    const Handle c = handle();
    for (const unsigned what : {0U, 1U, 4U}) {
        EXPECT_EQ(classify(c, fullMailbox, what), BOUNCECHECK_OK);
        EXPECT_EQ(verdictOf(c).type, BOUNCECHECK_TYPE_SOFT);
        EXPECT_EQ(bouncecheck_recipient_count(c.get()), what == 1 ? 1U : 0U);
        EXPECT_EQ(traceOf(c).size > 0, what == 4);
    }
}

TEST(CInterface, ReadsVerpAddresses) {
    const Handle c = handle();
    const auto add = [&](std::string_view form) {
        return bouncecheck_add_verp(c.get(), form.data(), form.size());
    };
    for (const std::string_view form : {"", "bounces@lists.example", "{tag}-{tag}@x.example"}) {
        EXPECT_EQ(add(form), BOUNCECHECK_BAD_PATTERN) << form;
    }
    EXPECT_EQ(add("b+{local}={domain}@lists.example"), BOUNCECHECK_OK);
    EXPECT_EQ(add("t-{tag}@lists.example"), BOUNCECHECK_OK);
    classify(c, "To: b+bob=other.example@lists.example\n" + fullMailbox);
    EXPECT_EQ(view(recipientOf(c, 0).address), "bob@other.example");
    EXPECT_EQ(recipientOf(c, 0).source, BOUNCECHECK_SOURCE_VERP);
    classify(c, "To: t-4711@lists.example\n" + fullMailbox);
    EXPECT_EQ(view(recipientOf(c, 0).tag), "4711");
}

TEST(CInterface, AnswersBadArguments) {
    const Handle c = handle();
    bouncecheck_classifier* const it = c.get();
    bouncecheck_verdict verdict;
    bouncecheck_text text;
    const std::vector<std::pair<bouncecheck_status, std::function<bouncecheck_status()>>> calls = {
        {BOUNCECHECK_BAD_ARGUMENT, [] { return bouncecheck_classifier_new(nullptr); }},
        {BOUNCECHECK_BAD_ARGUMENT, [] { return bouncecheck_add_verp(nullptr, "{tag}@x", 7); }},
        {BOUNCECHECK_BAD_ARGUMENT, [&] { return bouncecheck_add_verp(it, nullptr, 7); }},
        {BOUNCECHECK_BAD_PATTERN, [&] { return bouncecheck_add_verp(it, nullptr, 0); }},
        {BOUNCECHECK_BAD_ARGUMENT, [] { return bouncecheck_classify(nullptr, "a", 1, 0); }},
        {BOUNCECHECK_BAD_ARGUMENT, [&] { return bouncecheck_classify(it, nullptr, 1, 0); }},
        {BOUNCECHECK_BAD_ARGUMENT, [&] { return bouncecheck_classify(it, "a", SIZE_MAX, 0); }},
        {BOUNCECHECK_BAD_ARGUMENT, [&] { return bouncecheck_classify(it, "a", 1, 8); }},
        {BOUNCECHECK_NO_RESULT,
         [&] { return bouncecheck_get_verdict(it, &verdict, sizeof verdict); }},
        {BOUNCECHECK_NO_RESULT, [&] { return bouncecheck_get_field(it, "to", 2, &text); }},
        {BOUNCECHECK_OK, [&] { return bouncecheck_classify(it, nullptr, 0, everything); }},
        {BOUNCECHECK_BAD_ARGUMENT, [&] { return bouncecheck_get_verdict(it, nullptr, 8); }},
        {BOUNCECHECK_BAD_ARGUMENT, [&] { return bouncecheck_get_verdict(it, &verdict, 0); }},
        {BOUNCECHECK_BAD_ARGUMENT, [&] { return bouncecheck_get_verdict(nullptr, &verdict, 8); }},
        {BOUNCECHECK_BAD_ARGUMENT, [&] { return bouncecheck_get_trace(it, nullptr); }},
        {BOUNCECHECK_BAD_ARGUMENT, [&] { return bouncecheck_get_field(it, nullptr, 2, &text); }},
        {BOUNCECHECK_BAD_ARGUMENT, [&] { return bouncecheck_get_field(it, "to", 2, nullptr); }},
        {BOUNCECHECK_OK, [&] { return bouncecheck_get_field(it, nullptr, 0, &text); }},
    };
    for (std::size_t i = 0; i < calls.size(); ++i) {
        EXPECT_EQ(calls[i].second(), calls[i].first) << "call " << i;
    }
    EXPECT_EQ(bouncecheck_recipient_count(nullptr), 0U);
    EXPECT_EQ(bouncecheck_report_field_count(nullptr), 0U);
    bouncecheck_classifier_free(nullptr);
}

TEST(CInterface, KeepsNothingOfTheMessageBefore) {
    const Handle c = handle();
    classify(c, fullMailbox);
    ASSERT_EQ(bouncecheck_recipient_count(c.get()), 1U);
    classify(c, "Subject: lunch\n\nAt noon?\n");
    for (const std::size_t index : {std::size_t{0}, SIZE_MAX}) {
        EXPECT_EQ(row(recipientOf(c, index, BOUNCECHECK_OUT_OF_RANGE)), row(Recipient()));
    }

    classify(c, fullMailbox);
    EXPECT_EQ(classify(c, fullMailbox, 1U << 31), BOUNCECHECK_BAD_ARGUMENT);
    EXPECT_EQ(row(verdictOf(c, BOUNCECHECK_NO_RESULT).match), row(Match()));
    EXPECT_EQ(bouncecheck_recipient_count(c.get()), 0U);
}

TEST(CInterface, ClassifiesItsOwnTexts) {
    const Handle c = handle();
    classify(c, "Content-Type: text/plain\n\nSubject: Out of office\n\n" + std::string(5000, 'x'));
    EXPECT_EQ(classify(c, view(evidenceOf(c).data)), BOUNCECHECK_OK);
    bouncecheck_text subject;
    bouncecheck_get_field(c.get(), "SUBJECT", 7, &subject);
    EXPECT_EQ(view(subject), "Out of office");
    EXPECT_EQ(classify(c, view(subject)), BOUNCECHECK_OK);
}

TEST(CInterface, FillsStructuresOfOlderAndNewerPrograms) {
    const Handle c = handle();
    classify(c, fullMailbox);
    struct {
        bouncecheck_verdict known;
        unsigned char more[24];
    } newer;
    std::memset(&newer, 0x55, sizeof newer);
    EXPECT_EQ(bouncecheck_get_verdict(c.get(), &newer.known, sizeof newer), BOUNCECHECK_OK);
    EXPECT_EQ(view(newer.known.label), "2.3");
    for (const unsigned char byte : newer.more) EXPECT_EQ(byte, 0U);

    bouncecheck_verdict older;
    std::memset(&older, 0x55, sizeof older);
    const std::size_t size = offsetof(bouncecheck_verdict, match);
    EXPECT_EQ(bouncecheck_get_verdict(c.get(), &older, size), BOUNCECHECK_OK);
    EXPECT_EQ(view(older.advice), view(newer.known.advice));
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(&older) + size, sizeof older - size),
              std::string(sizeof older - size, 0x55));

    // Where the last members of version 0.2 stand, for pointers of 8 bytes: nothing may come
    // before them.
    constexpr bool isOther = sizeof(void*) != 8;
    static_assert(isOther || offsetof(bouncecheck_verdict, marker) == 168);
    static_assert(isOther || offsetof(bouncecheck_evidence, address_place) == 24);
    static_assert(isOther || offsetof(bouncecheck_recipient, quote) == 184);
    static_assert(isOther || offsetof(bouncecheck_facts, returned_return_path) == 112);
    static_assert(isOther || sizeof(bouncecheck_match) == 48);
    static_assert(isOther || sizeof(bouncecheck_text) == 16);
}

TEST(CInterface, IsC) {
    EXPECT_EQ(count_suppressed(fullMailbox.data(), fullMailbox.size()), 0U);
    const std::string unknown =
        "From: MAILER-DAEMON@mx.example\nSubject: Undelivered mail\n\n"
        "  ann@example.com\n    550 5.1.1 User unknown\n";
    EXPECT_EQ(count_suppressed(unknown.data(), unknown.size()), 1U);
}

TEST(CInterface, GoesFromThreadToThread) {
    const Handle c = handle();
    for (int i = 0; i < 3; ++i) {
        std::thread([&] {
            // A charset for which a thread keeps a conversion of its own.
            classify(c, "Content-Type: text/plain; charset=shift_jis\n" + fullMailbox);
        }).join();
        EXPECT_EQ(view(recipientOf(c, 0).address), "ann@example.com");
    }
}

/// The names of the numbers from -1 to one that is none any more.
std::string namesOf(const char* (*name)(int), int end) {
    std::string all;
    for (int number = -1; number <= end; ++number) all.append(name(number)).append("|");
    return all;
}

TEST(CInterface, NamesItsNumbers) {
    EXPECT_EQ(namesOf(bouncecheck_type_name, 16),
              "|none|hard|soft|no-recipient||blocked|auto-reply|transient||unsubscribe|virus|"
              "unclassified|challenge||disposition|abuse||");
    EXPECT_EQ(namesOf(bouncecheck_outcome_name, 8),
              "|failed|delayed|delivered|relayed|expanded|complained|displayed|unknown||");
    EXPECT_EQ(namesOf(bouncecheck_reason_name, 15),
              "||unknown-mailbox|inactive-mailbox|unknown-domain|mailbox-full|message-too-large|"
              "content|authentication|reputation|policy|rate-limit|unreachable|expired|system|"
              "other||");
    EXPECT_EQ(namesOf(bouncecheck_advice_name, 5), "|none|suppress|unsubscribe|retry|fix||");
    EXPECT_EQ(namesOf(bouncecheck_source_name, 5), "|verp|report|header|text|returned||");
    EXPECT_EQ(namesOf(bouncecheck_basis_name, 4), "||phrase|status|reply-code||");
    EXPECT_EQ(namesOf(bouncecheck_status_text, 6),
              "|ok|out of memory|bad argument|not a VERP pattern|nothing at this index|"
              "no message was classified||");
    for (const int reason : {-1, 3, 15}) {
        const bool is = reason == 3;
        EXPECT_EQ(bouncecheck_reason_meaning(reason), is ? allReasons()[3].meaning : "");
        EXPECT_EQ(bouncecheck_reason_action(reason), is ? allReasons()[3].action : "");
        EXPECT_EQ(bouncecheck_advice_meaning(reason), is ? allAdvices()[3].meaning : "");
    }
    EXPECT_STREQ(bouncecheck_version(), BOUNCECHECK_VERSION);
}

}  // namespace
}  // namespace bouncecheck
