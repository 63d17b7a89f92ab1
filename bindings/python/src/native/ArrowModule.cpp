#include "ArrowModule.h"

#include <utility>
#include <vector>

#include "ArrowCapsules.h"
#include "ArrowMessages.h"
#include "ArrowResults.h"

namespace nb = nanobind;

namespace bouncecheck::python {
namespace {

/// The results for messages as capsules of a record, which __arrow_c_array__ returns: for all
/// messages, or for as many as make `mostBytes` of text. Other threads of Python run meanwhile.
nb::tuple classifyArrow(nb::handle schema, nb::handle array, const nb::list& verp, bool withLedger,
                        std::size_t mostBytes) {
    const ArrowMessages messages(schemaIn(schema), arrayIn(array));
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
    return capsulesOf(std::move(results.columns()));
}

}  // namespace

void defineArrow(nb::module_& module) {
    module.def("classify_arrow", &classifyArrow, nb::arg("schema"), nb::arg("array"),
               nb::arg("verp"), nb::arg("ledger"), nb::arg("most_bytes"));
}

}  // namespace bouncecheck::python
