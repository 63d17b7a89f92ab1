#include "ArrowModule.h"

#include <memory>
#include <utility>
#include <vector>

#include "ArrowExport.h"
#include "ArrowMessages.h"
#include "ArrowResults.h"

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
    owned.release();
    return capsule;
}

/// The results for messages as capsules of a record, which __arrow_c_array__ returns: for all
/// messages, or for as many as make `mostBytes` of text. Other threads of Python run meanwhile.
nb::tuple classifyArrow(nb::handle schema, nb::handle array, const nb::list& verp, bool withLedger,
                        std::size_t mostBytes) {
    const ArrowMessages messages(structureIn<ArrowSchema>(schema, schemaName),
                                 structureIn<ArrowArray>(array, arrayName));
    std::vector<VerpPattern> patterns;
    for (const nb::handle pattern : verp) patterns.push_back(nb::cast<VerpPattern>(pattern));
    ArrowResults results(withLedger);
    {
        const nb::gil_scoped_release released;
        // Its memory is kept from batch to batch.
        thread_local Classifier classifier;
        for (std::int64_t row = 0; row < messages.size(); ++row) {
            if (const auto bytes = messages.at(row)) {
                results.add(*bytes, patterns, classifier);
            } else {
                results.addNone();
            }
            if (results.textBytes() >= mostBytes) break;
        }
    }
    nb::capsule types = capsuleOf(exportedSchema(results.columns()), schemaName);
    nb::capsule rows = capsuleOf(exportedArray(std::move(results.columns())), arrayName);
    return nb::make_tuple(types, rows);
}

}  // namespace

void defineArrow(nb::module_& module) {
    module.def("classify_arrow", &classifyArrow, nb::arg("schema"), nb::arg("array"),
               nb::arg("verp"), nb::arg("ledger"), nb::arg("most_bytes"));
}

}  // namespace bouncecheck::python
