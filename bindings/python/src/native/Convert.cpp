#include "Convert.h"

#include <nanobind/stl/string.h>

#include <array>
#include <string>
#include <utility>

namespace nb = nanobind;

namespace bouncecheck::python {
namespace {

/// The names of steps, in the order of LogTrace::Kind.
constexpr std::array<std::string_view, 4> stepNames = {"enter", "leave", "info", "tag"};

template <class Item, class Make>
nb::list listOf(std::span<const Item> items, Make make) {
    nb::list list;
    for (const Item& item : items) list.append(make(item));
    return list;
}

nb::tuple recipientRow(const Recipient& recipient) {
    return nb::make_tuple(
        textOf(recipient.address), textOf(recipient.finalAddress), textOf(recipient.tag),
        textOf(nameOf(recipient.outcome)), textOf(nameOf(recipient.reason)),
        textOf(nameOf(recipient.advice)), textOf(recipient.status), textOf(recipient.replyCode),
        textOf(recipient.diagnostic), textOf(recipient.remoteMta), textOf(recipient.lastAttempt),
        textOf(recipient.willRetryUntil), textOf(nameOf(recipient.source)),
        textOf(nameOf(recipient.basis)), textOf(recipient.row), textOf(recipient.quote));
}

nb::tuple reportFieldRow(const ReportField& field) {
    return nb::make_tuple(textOf(field.name), textOf(field.value));
}

nb::tuple returnedRow(const ReturnedMessage& message) {
    return nb::make_tuple(textOf(message.messageId), textOf(message.from), textOf(message.to),
                          textOf(message.subject), textOf(message.date), textOf(message.listId),
                          textOf(message.returnPath));
}

nb::tuple stepRow(const LogTrace::Event& event) {
    return nb::make_tuple(textOf(stepNames[static_cast<std::size_t>(event.kind)]),
                          textOf(event.text), textOf(event.value.view()));
}

LogTrace::Event eventOf(const nb::tuple& step) {
    const auto name = nb::cast<std::string>(step[0]);
    std::size_t kind = 0;
    while (kind < stepNames.size() - 1 && stepNames[kind] != name) ++kind;
    return {.kind = static_cast<LogTrace::Kind>(kind),
            .text = nb::cast<std::string>(step[1]),
            .value = ByteStore(nb::cast<std::string>(step[2]))};
}

}  // namespace

nb::object textOf(std::string_view utf8) {
    PyObject* text =
        PyUnicode_DecodeUTF8(utf8.data(), static_cast<Py_ssize_t>(utf8.size()), "replace");
    if (!text) throw nb::python_error();
    return nb::steal(text);
}

nb::tuple rowOf(const Answer& answer) {
    const Verdict& verdict = answer.verdict;
    nb::object trace = nb::none();
    if (answer.trace) trace = listOf(std::span<const LogTrace::Event>(*answer.trace), stepRow);
    return nb::make_tuple(static_cast<int>(verdict.type), textOf(bounceTypeName(verdict.type)),
                          textOf(verdict.label()), textOf(verdict.address),
                          listOf(std::span<const Recipient>(answer.recipients), recipientRow),
                          textOf(answer.facts.reportingMta),
                          listOf(std::span<const ReportField>(answer.facts.report), reportFieldRow),
                          returnedRow(answer.facts.returned), trace);
}

std::vector<LogTrace::Event> eventsOf(const nb::list& steps) {
    std::vector<LogTrace::Event> events;
    events.reserve(steps.size());
    for (const nb::handle step : steps) events.push_back(eventOf(nb::cast<nb::tuple>(step)));
    return events;
}

}  // namespace bouncecheck::python
