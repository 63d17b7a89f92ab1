#include "bench/worst/Measure.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <limits>
#include <ostream>
#include <stdexcept>
#include <streambuf>
#include <vector>

#include <bouncecheck/LogNull.h>
#include <bouncecheck/classes/BounceCheck.h>
#include <bouncecheck/classes/Email2.h>
#include "bench/support/Clocks.h"
#include "bench/support/MessageFolder.h"
#include "facts/FactsOf.h"
#include "recipients/Recipients.h"
#include "tool/Classify.h"

namespace bouncecheck::bench {
namespace {

void classify(std::string message) {
    Email2 email(std::move(message));
    BounceCheck check;
    StringBuffer address;
    StringBuffer data;
    LogNull log;
    check.checkEmail(email, address, data, log);
    factsOf(entityOf(email));
    recipientsOf(entityOf(email));
}

/// Takes everything and keeps nothing.
class Discard final : public std::streambuf {
    std::streamsize xsputn(const char*, std::streamsize size) override { return size; }
    int overflow(int c) override { return traits_type::not_eof(c); }
};

void print(std::string message, const Form& form) {
    Discard nowhere;
    std::ostream out(&nowhere);
    const std::unique_ptr<Output> output = form.make(out);
    ToolClassifier classifier(output->wanted());
    Classified result = asRead({.place = {.source = "-"}, .bytes = std::move(message)});
    classifier.classify(result);
    if (!result.problem.empty()) throw std::runtime_error(std::string(result.problem));
    output->show(result);
    output->finish();
}

void process(std::string message, const Form* form) {
    if (form) {
        print(std::move(message), *form);
    } else {
        classify(std::move(message));
    }
}

[[noreturn]] void work(const std::function<double()>& work, unsigned cpuSeconds, int output) {
    const rlimit time{cpuSeconds, cpuSeconds};
    setrlimit(RLIMIT_CPU, &time);
    constexpr rlim_t mostMemory = rlim_t{4} << 30;
    const rlimit memory{mostMemory, mostMemory};
    setrlimit(RLIMIT_AS, &memory);
    const rlimit noCoreFile{0, 0};
    setrlimit(RLIMIT_CORE, &noCoreFile);
    try {
        const double result = work();
        if (write(output, &result, sizeof result) == sizeof result) _exit(0);
    } catch (const std::exception&) {
    }
    _exit(1);
}

}  // namespace

Outcome inProcess(const std::function<double()>& task, unsigned cpuSeconds) {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe can be opened");
    const pid_t child = fork();
    if (child < 0) throw std::runtime_error("no process can be started");
    if (child == 0) work(task, cpuSeconds, ends[1]);
    close(ends[1]);

    Outcome outcome;
    const bool reported = read(ends[0], &outcome.result, sizeof outcome.result) ==
                          static_cast<ssize_t>(sizeof outcome.result);
    close(ends[0]);
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    outcome.peakBytes = 1024.0 * static_cast<double>(usage.ru_maxrss);
    if (!reported) {
        const int signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
        const bool late = signal == SIGXCPU || signal == SIGKILL;
        outcome.end = late ? Outcome::End::outOfTime : Outcome::End::crashed;
        outcome.result = 0;
    }
    return outcome;
}

double secondsFor(std::string message, const Form* form) {
    process("Subject: Undeliverable: x\n\nFinal-Recipient: rfc822; a@b.example\n", form);
    const Stopwatch watch;
    process(std::move(message), form);
    return watch.seconds();
}

double ordinarySecondsPerByte(const std::filesystem::path& folder, const Form* form) {
    constexpr int runs = 9;
    std::vector<double> all;
    for (const StoredMessage& message : readMessages(folder)) {
        if (message.bytes.empty()) continue;
        double best = std::numeric_limits<double>::max();
        for (int i = 0; i < runs; ++i) {
            std::string copy = message.bytes;
            const Stopwatch watch;
            process(std::move(copy), form);
            best = std::min(best, watch.seconds());
        }
        all.push_back(best / static_cast<double>(message.bytes.size()));
    }
    if (all.empty()) throw std::runtime_error(folder.string() + ": holds empty messages only");
    const auto middle = all.begin() + static_cast<std::ptrdiff_t>(all.size() / 2);
    std::ranges::nth_element(all, middle);
    return *middle;
}

}  // namespace bouncecheck::bench
