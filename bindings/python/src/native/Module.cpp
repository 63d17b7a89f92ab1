#include <nanobind/nanobind.h>
#include <nanobind/stl/optional.h>
#include <nanobind/stl/pair.h>
#include <nanobind/stl/string.h>
#include <nanobind/stl/string_view.h>

#include <bouncecheck/bouncecheck.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Answer.h"
#include "ArrowModule.h"
#include "Convert.h"
#include "StoredModule.h"

namespace nb = nanobind;

namespace bouncecheck::python {
namespace {

/// The rows of `messages`, a list of bytes. Other threads of Python run meanwhile.
nb::list classifyAll(const nb::list& messages, const nb::list& verp, bool withTrace) {
    // References of its own, since another thread may change the list.
    std::vector<nb::bytes> held;
    std::vector<std::string_view> texts;
    held.reserve(messages.size());
    for (const nb::handle message : messages) {
        held.push_back(nb::cast<nb::bytes>(message));
        texts.emplace_back(held.back().c_str(), held.back().size());
    }
    std::vector<VerpPattern> patterns;
    for (const nb::handle pattern : verp) patterns.push_back(nb::cast<VerpPattern>(pattern));

    std::vector<Answer> answers;
    {
        const nb::gil_scoped_release released;
        answers = answersFor(texts, patterns, withTrace);
    }
    nb::list rows;
    for (const Answer& answer : answers) rows.append(rowOf(answer));
    return rows;
}

VerpPattern verpPattern(std::string_view pattern) {
    auto parsed = VerpPattern::parse(pattern);
    if (parsed) return *std::move(parsed);
    const std::string message = "\"" + std::string(pattern) +
                                "\" needs an '@' and either {local} and {domain}, or {tag}, "
                                "each once and divided by other characters";
    throw nb::value_error(message.c_str());
}

std::string treeOf(const nb::list& steps) { return traceTree(eventsOf(steps)); }

/// What a verdict means, and what to do about it. An unknown label counts as none.
nb::tuple explanation(int type, std::string_view label) {
    const Rule* rule = ruleOf(label);
    const VerdictType* row = verdictTypeOf(type);
    const std::string_view meaning = rule ? rule->meaning : row ? row->meaning : "";
    return nb::make_tuple(textOf(meaning), textOf(adviceFor(type, rule)));
}

nb::list verdicts() {
    nb::list rows;
    for (const VerdictType& row : allVerdictTypes()) {
        rows.append(nb::make_tuple(textOf(row.name), static_cast<int>(row.type)));
    }
    return rows;
}

nb::list reasons() {
    nb::list rows;
    for (const ReasonMeaning& row : allReasons()) {
        if (row.reason == Reason::none) continue;
        rows.append(nb::make_tuple(textOf(row.name), textOf(row.meaning), textOf(row.action)));
    }
    return rows;
}

nb::list advices() {
    nb::list rows;
    for (const AdviceMeaning& row : allAdvices()) {
        rows.append(nb::make_tuple(textOf(row.name), textOf(row.meaning)));
    }
    return rows;
}

}  // namespace
}  // namespace bouncecheck::python

NB_MODULE(_native, module) {
    using namespace bouncecheck;
    namespace py = bouncecheck::python;

    nb::class_<VerpPattern>(module, "VerpPattern",
                            "The form of the addresses that a sender's mail comes back to, one for "
                            "each recipient:\n"
                            "\"bounces+{local}={domain}@lists.example.org\" or "
                            "\"bounces-{tag}@example.org\".\n\n"
                            "Raises ValueError for any other form.")
        .def(nb::new_(&py::verpPattern), nb::arg("pattern"))
        .def(
            "match",
            [](const VerpPattern& pattern,
               std::string_view address) -> std::optional<std::pair<std::string, std::string>> {
                auto match = pattern.match(address);
                if (!match) return std::nullopt;
                return std::pair(std::move(match->address), std::move(match->tag));
            },
            nb::arg("address"),
            "The address and the tag that `address` carries, one of them \"\"; None where it is "
            "not of the form.");

    module.def("classify_all", &py::classifyAll, nb::arg("messages"), nb::arg("verp"),
               nb::arg("trace"));
    module.def("trace_tree", &py::treeOf, nb::arg("steps"));
    module.def("explanation", &py::explanation, nb::arg("type"), nb::arg("label"));
    module.def("verdicts", &py::verdicts);
    module.def("reasons", &py::reasons);
    module.def("advices", &py::advices);
    py::defineArrow(module);
    py::defineStored(module);
}
