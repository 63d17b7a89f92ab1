// How the time of a whole classification grows with the size of the message, for
// shapes that made other parsers slow. Each shape runs at several sizes in one
// run; the RMS of the fit to N is to stay small.

#include <benchmark/benchmark.h>

#include <string>

#include "bounce/BounceCheck.h"
#include "log/LogNull.h"
#include "mime/Email2.h"

namespace bouncecheck {
namespace {

constexpr std::size_t kib = 1024;

/// Leads to the classification of the text, the longest road.
const std::string header = "From: Postmaster@relay.example\nSubject: Undeliverable: hello\n";

std::string repeated(const std::string& piece, std::size_t bytes) {
    std::string out;
    out.reserve(bytes + piece.size());
    while (out.size() < bytes) out += piece;
    return out;
}

std::string oneLine(std::size_t bytes) { return header + "\n" + repeated("sorry, no ", bytes); }

std::string nestedMultiparts(std::size_t bytes) {
    std::string out = header;
    for (std::size_t i = 0; out.size() < bytes; ++i) {
        const std::string boundary = std::string("b").append(std::to_string(i));
        out += "Content-Type: multipart/mixed; boundary=" + boundary + "\n\n--" + boundary + "\n";
    }
    return out;
}

std::string headerLines(std::size_t bytes) {
    return header + repeated("X-Header: a value\n", bytes) + "\nhello\n";
}

std::string manyParts(std::size_t bytes) {
    return header + "Content-Type: multipart/mixed; boundary=b\n\n" +
           repeated("--b\n\npart\n", bytes);
}

std::string openQuotes(std::size_t bytes) {
    return "Subject: Undeliverable\nFrom: " + repeated("\"(<a ", bytes) + "\n\nhello\n";
}

std::string openTags(std::size_t bytes) {
    return header + "Content-Type: text/html\n\n" + repeated("<a x='<!--", bytes);
}

std::string encodedWords(std::size_t bytes) {
    return "Subject: " + repeated("=?utf-8?q?x?", bytes) + "\n\nhello\n";
}

void classify(benchmark::State& state, std::string (*shape)(std::size_t)) {
    const std::string message = shape(static_cast<std::size_t>(state.range(0)) * kib);
    for (auto _ : state) {
        Email2 email(message);
        BounceCheck check;
        StringBuffer address;
        StringBuffer data;
        LogNull log;
        benchmark::DoNotOptimize(check.checkEmail(email, address, data, log));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(message.size()));
    state.SetComplexityN(state.range(0));
}

#define SHAPE(name)                         \
    BENCHMARK_CAPTURE(classify, name, name) \
        ->RangeMultiplier(4)                \
        ->Range(16, 1024)                   \
        ->Complexity(benchmark::oN)
SHAPE(oneLine);
SHAPE(nestedMultiparts);
SHAPE(headerLines);
SHAPE(manyParts);
SHAPE(openQuotes);
SHAPE(openTags);
SHAPE(encodedWords);

}  // namespace
}  // namespace bouncecheck
