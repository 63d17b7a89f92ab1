#include "tool/RunFiles.h"

#include "files/TemporaryFile.h"
#include "tool/OutputTargets.h"
#include "tool/output/OutputForms.h"

namespace bouncecheck {

RunFiles::RunFiles(Options& options) {
    if (options.outFile || options.pageFile || options.sortInto) removeTemporariesOnSignals();
    if (options.outFile) file_.emplace(*options.outFile);
    if (options.pageFile) page_.emplace(*options.pageFile);
    SourceOptions& sources = options.sources;
    sources.written = outputTargets(options);
    sources.holdsOutput = holdsOutput;
    if (file_) sources.excluded.push_back(file_->temporary());
    if (page_) sources.excluded.push_back(page_->temporary());
    if (options.sortInto) sources.excluded.push_back(*options.sortInto);
}

void RunFiles::commit() {
    if (file_) file_->commit();
    if (page_) page_->commit();
}

}  // namespace bouncecheck
