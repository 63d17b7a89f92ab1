#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "bench/worst/Forms.h"

namespace bouncecheck::bench {

/// What a process of its own reported about its work.
struct Outcome {
    enum class End { well, outOfTime, crashed };
    End end = End::well;
    /// What the work returned; 0 unless it ended well.
    double result = 0;
    /// The most memory that the process had, in bytes.
    double peakBytes = 0;
};

/// Runs `work` in a process of its own, which has `cpuSeconds` of processor time.
/// Throws std::runtime_error when no process can be had.
Outcome inProcess(const std::function<double()>& work, unsigned cpuSeconds);

/// The time in seconds of parsing and classifying `message`, what is
/// made once a process apart. With a form, of all that the tool does to print it so.
double secondsFor(std::string message, const Form* form);

/// The median of the seconds a byte that the messages of a folder take.
double ordinarySecondsPerByte(const std::filesystem::path& folder, const Form* form);

}  // namespace bouncecheck::bench
