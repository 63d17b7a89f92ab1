// The stages of a classification over a folder of messages, which are read into
// memory first. The folder is the argument, or what BOUNCECHECK_MESSAGES names,
// or the samples. Stages include those before them; all but the phrase search
// include the copy of the message that an Email2 takes over.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <exception>
#include <iostream>

#include <bouncecheck/LogNull.h>
#include <bouncecheck/LogTrace.h>
#include <bouncecheck/classes/BounceCheck.h>
#include <bouncecheck/classes/Email2.h>
#include "bench/PhrasePass.h"
#include "bench/support/Literals.h"
#include "bench/support/MessageFolder.h"
#include "bench/support/SearchedTexts.h"

namespace bouncecheck::bench {
namespace {

using Messages = std::vector<StoredMessage>;

/// `BounceCheck` with its first step in the open.
class Loader : public BounceCheck {
public:
    using BounceCheck::loadTransients;
};

void report(benchmark::State& state, std::size_t messages, std::size_t bytes) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(messages));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

/// Runs `stage` with each message, parsed.
template <class Stage>
void overMessages(benchmark::State& state, const Messages& messages, Stage stage) {
    for (auto _ : state) {
        for (const StoredMessage& message : messages) {
            Email2 email(message.bytes);
            stage(email);
        }
    }
    report(state, messages.size(), totalBytes(messages));
}

void parse(benchmark::State& state, const Messages& messages) {
    overMessages(state, messages,
                 [](Email2& email) { benchmark::DoNotOptimize(email.getNumParts()); });
}

void load(benchmark::State& state, const Messages& messages) {
    Loader check;
    LogNull log;
    overMessages(state, messages, [&](Email2& email) { check.loadTransients(email, log); });
}

template <class Log>
void classify(benchmark::State& state, const Messages& messages) {
    BounceCheck check;
    overMessages(state, messages, [&](Email2& email) {
        Log log;
        StringBuffer address;
        StringBuffer data;
        benchmark::DoNotOptimize(check.checkEmail(email, address, data, log));
    });
}

void searchPhrases(benchmark::State& state, const std::vector<std::string>& texts) {
    const std::vector<std::string> literals = tableLiterals();
    const PhrasePass pass(viewsOf(literals));
    std::size_t bytes = 0;
    for (const std::string& text : texts) bytes += text.size();
    for (auto _ : state) {
        std::size_t found = 0;
        for (const std::string& text : texts) {
            pass.scan(text, [&](std::size_t) { ++found; });
        }
        benchmark::DoNotOptimize(found);
    }
    report(state, texts.size() / 2, bytes);
}

void preparePhrases(benchmark::State& state) {
    const std::vector<std::string> literals = tableLiterals();
    const std::vector<std::string_view> phrases = viewsOf(literals);
    for (auto _ : state) {
        const PhrasePass pass(phrases);
        benchmark::DoNotOptimize(&pass);
    }
}

std::string folderFrom(int argc, char** argv) {
    if (argc > 1) return argv[1];
    const char* named = std::getenv("BOUNCECHECK_MESSAGES");
    return named ? named : SAMPLES_DIR;
}

int run(int argc, char** argv) {
    const Messages messages = readMessages(folderFrom(argc, argv));
    const std::vector<std::string> texts = searchedTexts(messages);
    const auto add = [](const char* name, auto stage, const auto& input) {
        benchmark::RegisterBenchmark(
            name, [stage, &input](benchmark::State& state) { stage(state, input); });
    };
    add("parse", parse, messages);
    add("load", load, messages);
    add("classify", classify<LogNull>, messages);
    add("classify with trace", classify<LogTrace>, messages);
    add("phrase search", searchPhrases, texts);
    benchmark::RegisterBenchmark("phrase tables", preparePhrases);
    std::cerr << messages.size() << " messages, " << totalBytes(messages) << " bytes\n";
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

}  // namespace
}  // namespace bouncecheck::bench

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    try {
        return bouncecheck::bench::run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "bouncecheck_bench: " << error.what() << '\n';
        return 1;
    }
}
