#pragma once

#include "ArrowColumn.h"
#include "ArrowInterface.h"

namespace bouncecheck::python {

/// The type of a column and of those inside. Whoever gets it calls its `release` once.
ArrowSchema exportedSchema(const ArrowColumn& column);

/// The rows of a column, which lives on until `release` is called. A child can be moved out and
/// released for itself, as the interface has it.
ArrowArray exportedArray(ArrowColumn&& column);

}  // namespace bouncecheck::python
