// Writes the messages below a path, over and over until they are so large together,
// in three forms: OUT/mbox, one message a file below OUT/files, and OUT/Maildir. Prints
// how many messages there are, and how many bytes.

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "tool/sources/Sources.h"

namespace {

namespace fs = std::filesystem;

std::vector<std::string> messagesOf(const std::string& path) {
    std::vector<std::string> messages;
    bouncecheck::readSources(
        {.paths = {path}},
        [&](bouncecheck::SourceMessage message) {
            if (!message.bytes.empty()) messages.push_back(std::move(message.bytes));
        },
        [](std::string_view source, std::string_view reason) {
            throw std::runtime_error(std::string(source).append(": ").append(reason));
        });
    if (messages.empty()) throw std::runtime_error(path + ": holds no messages");
    return messages;
}

/// `message` as an mboxrd file has it: an envelope, one '>' more before each "From "
/// that begins a line behind such, and a blank line.
std::string inMailbox(std::string_view message) {
    std::string out = "From mailer-daemon@example.org Thu Sep 18 17:54:04 2008\n";
    for (std::size_t at = 0; at < message.size();) {
        const std::size_t end = std::min(message.find('\n', at), message.size() - 1) + 1;
        const std::string_view line = message.substr(at, end - at);
        const std::size_t quotes = std::min(line.find_first_not_of('>'), line.size());
        if (line.substr(quotes).starts_with("From ")) out += '>';
        out += line;
        at = end;
    }
    if (!out.ends_with('\n')) out += '\n';
    return out += '\n';
}

void writeFile(const fs::path& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary);
    if (!(file << bytes << std::flush)) {
        throw std::runtime_error(path.string() + ": could not be written");
    }
}

/// A number whose order as text is that of numbers.
std::string padded(std::uint64_t number) {
    std::string digits = std::to_string(number);
    return digits.insert(0, 9 - std::min<std::size_t>(digits.size(), 9), '0');
}

void makeAll(const std::string& source, const fs::path& out, std::uint64_t size) {
    const std::vector<std::string> messages = messagesOf(source);
    std::vector<std::string> mailbox;
    for (const std::string& message : messages) mailbox.push_back(inMailbox(message));

    for (const char* folder : {"cur", "new", "tmp"}) {
        fs::create_directories(out / "Maildir" / folder);
    }
    std::ofstream mbox(out / "mbox", std::ios::binary);
    std::uint64_t count = 0;
    std::uint64_t bytes = 0;
    for (; bytes < size; ++count) {
        const std::size_t i = count % messages.size();
        constexpr std::uint64_t filesInFolder = 1000;
        const fs::path folder = out / "files" / padded(count / filesInFolder);
        if (count % filesInFolder == 0) fs::create_directories(folder);
        mbox << mailbox[i];
        writeFile(folder / (padded(count) + ".eml"), messages[i]);
        writeFile(out / "Maildir/cur" / ("1221753244." + padded(count) + ".mx:2,S"), messages[i]);
        bytes += messages[i].size();
    }
    if (!mbox.flush()) throw std::runtime_error("the mbox file could not be written");
    std::cout << count << '\t' << bytes << '\n';
}

}  // namespace

int main(int argc, char** argv) {
    std::uint64_t size = 0;
    if (argc == 4) std::from_chars(argv[3], argv[3] + std::string_view(argv[3]).size(), size);
    if (size == 0) {
        std::cerr << "usage: " << argv[0] << " PATH OUT BYTES\n";
        return 2;
    }
    try {
        makeAll(argv[1], argv[2], size);
    } catch (const std::exception& error) {
        std::cerr << argv[0] << ": " << error.what() << '\n';
        return 1;
    }
    return 0;
}
