#pragma once

#include <nanobind/nanobind.h>

#include "ArrowColumn.h"
#include "ArrowInterface.h"

/// The structures of Arrow as objects of Python (the PyCapsule interface of Arrow).
namespace bouncecheck::python {

/// What a capsule holds, which stays there. Throws nanobind::python_error for another capsule,
/// nanobind::value_error for one whose content was released.
const ArrowSchema& schemaIn(nanobind::handle capsule);
const ArrowArray& arrayIn(nanobind::handle capsule);

/// The type and the rows of a column, as __arrow_c_array__ returns them.
nanobind::tuple capsulesOf(ArrowColumn&& column);

}  // namespace bouncecheck::python
