#pragma once

#include <nanobind/nanobind.h>

namespace bouncecheck::python {

/// Adds what `arrow.py` calls.
void defineArrow(nanobind::module_& module);

}  // namespace bouncecheck::python
