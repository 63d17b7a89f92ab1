#pragma once

#include <nanobind/nanobind.h>

#include <span>
#include <string_view>
#include <vector>

#include "Answer.h"

namespace bouncecheck::python {

/// A str of UTF-8. Each stretch that is none becomes U+FFFD, as in the JSON of the tool: an
/// address or a step of the trace can have bytes of an unknown charset.
nanobind::object textOf(std::string_view utf8);

/// The tuple that `_results.result_of` takes: plain values, in the order of the keys in JSON.
nanobind::tuple rowOf(const Answer& answer);

/// The steps that `rowOf` made of a trace, as events again. Throws nanobind::cast_error when
/// they have another form.
std::vector<LogTrace::Event> eventsOf(const nanobind::list& steps);

}  // namespace bouncecheck::python
