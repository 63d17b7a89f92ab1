#include "bench/worst/Measure.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <limits>
#include <stdexcept>
#include <vector>

#include "bench/support/Clocks.h"
#include "bench/support/MessageFolder.h"
#include "bounce/BounceCheck.h"
#include "log/LogNull.h"
#include "mime/Email2.h"

namespace bouncecheck::bench {
namespace {

void classify(std::string message) {
    Email2 email(std::move(message));
    BounceCheck check;
    StringBuffer address;
    StringBuffer data;
    LogNull log;
    check.checkEmail(email, address, data, log);
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

double secondsToClassify(std::string message) {
    classify("Subject: Undeliverable: x\n\nFinal-Recipient: rfc822; a@b.example\n");
    const Stopwatch watch;
    classify(std::move(message));
    return watch.seconds();
}

double ordinarySecondsPerByte(const std::filesystem::path& folder) {
    constexpr int runs = 9;
    std::vector<double> all;
    for (const StoredMessage& message : readMessages(folder)) {
        if (message.bytes.empty()) continue;
        double best = std::numeric_limits<double>::max();
        for (int i = 0; i < runs; ++i) {
            std::string copy = message.bytes;
            const Stopwatch watch;
            classify(std::move(copy));
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
