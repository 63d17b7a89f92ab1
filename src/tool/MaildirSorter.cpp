#include "tool/MaildirSorter.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <bouncecheck/BounceType.h>
#include "files/FdStream.h"
#include "files/Paths.h"
#include "files/TemporaryFile.h"

namespace bouncecheck {
namespace {

[[noreturn]] void fail(const std::string& path) {
    throw std::runtime_error(path + ": " + std::strerror(errno));
}

/// Mail is private.
void makeFolder(const std::string& path) {
    if (::mkdir(path.c_str(), 0700) != 0 && errno != EEXIST) fail(path);
}

std::string hostName() {
    std::array<char, 256> name = {};
    ::gethostname(name.data(), name.size() - 1);
    std::string host = name.data();
    for (char& c : host) {
        if (c == '/' || c == ':') c = '_';
    }
    return host.empty() ? "localhost" : host;
}

}  // namespace

MaildirSorter::MaildirSorter(std::string folder) : folder_(std::move(folder)) {
    std::error_code error;
    std::filesystem::create_directories(folder_, error);
    if (error) throw std::runtime_error(folder_ + ": " + error.message());
}

void MaildirSorter::makeMaildir(const std::string& maildir) {
    if (maildirs_.contains(maildir)) return;
    for (const char* part : {"", "/tmp", "/new", "/cur"}) makeFolder(maildir + part);
    syncFolderOf(maildir + "/new");
    syncFolderOf(maildir);
    maildirs_.insert(maildir);
}

/// A name that no other delivery has, now or later, on this host or another.
std::string MaildirSorter::nextName() {
    using namespace std::chrono;
    const auto now = system_clock::now().time_since_epoch();
    const auto seconds = duration_cast<std::chrono::seconds>(now);
    const auto micro = duration_cast<microseconds>(now - seconds);
    return std::to_string(seconds.count()) + ".M" + std::to_string(micro.count()) + "P" +
           std::to_string(::getpid()) + "Q" + std::to_string(++count_) + "." + hostName();
}

void MaildirSorter::deliver(const Classified& message) {
    const std::string maildir = folder_ + "/" + bounceTypeName(message.type);
    makeMaildir(maildir);
    const std::string name = nextName();
    const std::string delivered = maildir + "/new/" + name;
    TemporaryFile file;
    const bool isDelivered = file.create(maildir + "/tmp/" + name, 0600) &&
                             writeAll(file.fd(), message.bytes.data(), message.bytes.size()) &&
                             file.moveTo(delivered);
    if (!isDelivered) fail(delivered);
}

void MaildirSorter::finish() {
    for (const std::string& maildir : maildirs_) syncFolderOf(maildir + "/new/");
}

}  // namespace bouncecheck
