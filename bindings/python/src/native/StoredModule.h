#pragma once

#include <nanobind/nanobind.h>

namespace bouncecheck::python {

/// Adds what `_stored.py` calls.
void defineStored(nanobind::module_& module);

}  // namespace bouncecheck::python
