#include "tool/Run.h"

#include <exception>
#include <new>
#include <optional>
#include <ostream>
#include <utility>

#include "tool/Batch.h"
#include "tool/InputOptions.h"
#include "tool/ListPhrases.h"
#include "tool/Options.h"
#include "tool/Problem.h"
#include "tool/RunFiles.h"
#include "tool/commands/Command.h"
#include "tool/sources/Sources.h"

namespace bouncecheck {
namespace {

int runWith(Options options, std::ostream& standardOut, std::ostream& err,
            const Terminal& terminal) {
    const bool readsMail = options.view != View::phrases;
    if (readsMail) readStandardInputElse(options.sources, err);
    RunFiles files(options);
    std::ostream& out = files.out(standardOut);
    int status = EXIT_ALL_CLASSIFIED;
    if (readsMail) {
        status = Batch(options, out, files.page(), err, terminal).run();
    } else {
        listPhrases(out);
    }
    checkWritten(out.flush());
    files.commit();
    return status;
}

}  // namespace

int runTool(int argc, const char* const* argv, std::ostream& out, std::ostream& err,
            const Terminal& terminal) {
    // A file of that name is "./NAME".
    const CommandRow* command = argc > 1 ? commandNamed(argv[1]) : nullptr;
    if (command) return runCommand(*command, argc - 1, argv + 1, {out, err, terminal});
    try {
        int status = EXIT_ALL_CLASSIFIED;
        std::optional<Options> options = parseOptions(argc, argv, out, err, status);
        if (!options) return status;
        return runWith(std::move(*options), out, err, terminal);
    } catch (const std::bad_alloc&) {
        reportProblem(err, outOfMemory);
    } catch (const SourceIsOutput& error) {
        reportProblem(err, error.what());
        return EXIT_WRONG_USAGE;
    } catch (const std::exception& error) {
        reportProblem(err, error.what());
    }
    return EXIT_SOME_UNREADABLE;
}

}  // namespace bouncecheck
