#include "ArrowCapsules.h"

#include <memory>
#include <utility>

#include "ArrowExport.h"

namespace nb = nanobind;

namespace bouncecheck::python {
namespace {

constexpr const char* schemaName = "arrow_schema";
constexpr const char* arrayName = "arrow_array";

template <class Structure>
const Structure& structureIn(nb::handle capsule, const char* name) {
    const auto* structure =
        static_cast<const Structure*>(PyCapsule_GetPointer(capsule.ptr(), name));
    if (!structure) throw nb::python_error();
    if (!structure->release) throw nb::value_error("the Arrow data were released already");
    return *structure;
}

/// Releases what nobody has taken out of the capsule.
template <class Structure>
void endCapsule(void* data) noexcept {
    const std::unique_ptr<Structure> structure(static_cast<Structure*>(data));
    if (structure->release) structure->release(structure.get());
}

template <class Structure>
nb::capsule capsuleOf(Structure structure, const char* name) {
    auto owned = std::make_unique<Structure>(structure);
    nb::capsule capsule(owned.get(), name, endCapsule<Structure>);
    static_cast<void>(owned.release());  // the capsule has it
    return capsule;
}

}  // namespace

const ArrowSchema& schemaIn(nb::handle capsule) {
    return structureIn<ArrowSchema>(capsule, schemaName);
}

const ArrowArray& arrayIn(nb::handle capsule) {
    return structureIn<ArrowArray>(capsule, arrayName);
}

nb::tuple capsulesOf(ArrowColumn&& column) {
    nb::capsule types = capsuleOf(exportedSchema(column), schemaName);
    nb::capsule rows = capsuleOf(exportedArray(std::move(column)), arrayName);
    return nb::make_tuple(types, rows);
}

}  // namespace bouncecheck::python
