#pragma once

#include <cstddef>
#include <exception>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "bench/support/Clocks.h"
#include "bench/support/MessageFolder.h"
#include "mime/LineEnds.h"

/// What the sides of a comparison share: the command line `count FOLDER` or
/// `time FOLDER`, the messages, and the form of the output, which is a line
/// `name<TAB>value` for each message or figure.
namespace bouncecheck::bench {

/// The messages of `folder`, bare CRs as line ends made CRLF: not every parser
/// knows those.
inline std::vector<StoredMessage> comparableMessages(const std::string& folder) {
    std::vector<StoredMessage> messages = readMessages(folder);
    for (StoredMessage& message : messages) {
        if (message.bytes.find('\n') == std::string::npos) {
            message.bytes = withCrLf(std::move(message.bytes));
        }
    }
    return messages;
}

/// Prints the time of one pass in seconds under the name of the figure.
template <class Pass>
void printTime(std::string_view figure, Pass&& pass) {
    std::cout << figure << '\t' << secondsPerPass(pass) << '\n';
}

/// The main function of a side. `countParts(bytes)` returns how many entities a
/// message has; `time(messages)` prints the figures.
template <class CountParts, class Time>
int runSide(int argc, char** argv, CountParts countParts, Time time) {
    const std::string_view mode = argc == 3 ? argv[1] : "";
    if (mode != "count" && mode != "time") {
        std::cerr << "usage: " << argv[0] << " count|time FOLDER\n";
        return 2;
    }
    try {
        const std::vector<StoredMessage> messages = comparableMessages(argv[2]);
        if (mode == "time") {
            time(messages);
        } else {
            for (const StoredMessage& message : messages) {
                std::cout << message.name << '\t' << countParts(message.bytes) << '\n';
            }
        }
    } catch (const std::exception& error) {
        std::cerr << argv[0] << ": " << error.what() << '\n';
        return 1;
    }
    return 0;
}

}  // namespace bouncecheck::bench
