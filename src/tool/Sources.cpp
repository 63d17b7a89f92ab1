#include "tool/Sources.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <new>
#include <optional>
#include <system_error>
#include <utility>

namespace bouncecheck {
namespace {

namespace fs = std::filesystem;

struct FileCloser {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

/// All bytes of `file`, or nothing when reading fails; errno tells why.
std::optional<std::string> readAll(std::FILE* file) {
    std::string bytes;
    std::array<char, 1 << 16> chunk;
    for (std::size_t count; (count = std::fread(chunk.data(), 1, chunk.size(), file)) > 0;) {
        bytes.append(chunk.data(), count);
    }
    if (std::ferror(file)) return std::nullopt;
    return bytes;
}

class SourceReader {
public:
    SourceReader(const OnMessage& onMessage, const OnProblem& onProblem)
        : onMessage_(onMessage), onProblem_(onProblem) {}

    void read(const std::string& path) {
        if (path == "-") {
            readFile("-", stdin);
            return;
        }
        std::error_code error;
        const fs::file_status status = fs::status(path, error);
        if (error) {
            onProblem_(path, error.message());
        } else if (fs::is_directory(status)) {
            readFolder(path);
        } else {
            openFile(path);
        }
    }

private:
    void readFolder(const fs::path& folder) {
        std::error_code error;
        std::vector<fs::directory_entry> entries;
        for (fs::directory_iterator it(folder, error), end; !error && it != end;
             it.increment(error)) {
            entries.push_back(*it);
        }
        if (error) onProblem_(folder.string(), error.message());
        std::ranges::sort(entries, {},
                          [](const fs::directory_entry& e) { return e.path().native(); });
        for (const fs::directory_entry& entry : entries) {
            const bool isLink = entry.is_symlink(error);
            const fs::file_status status = entry.status(error);
            if (fs::is_directory(status)) {
                if (!isLink) readFolder(entry.path());
            } else if (!fs::is_other(status)) {  // no sockets, no pipes
                openFile(entry.path().string());
            }
        }
    }

    void openFile(const std::string& path) {
        const File file(std::fopen(path.c_str(), "rb"));
        if (file) {
            readFile(path, file.get());
        } else {
            onProblem_(path, std::strerror(errno));
        }
    }

    void readFile(const std::string& name, std::FILE* file) {
        try {
            std::optional<std::string> bytes = readAll(file);
            if (bytes) {
                onMessage_(name, std::move(*bytes));
            } else {
                onProblem_(name, std::strerror(errno));
            }
        } catch (const std::bad_alloc&) {  // one huge file does not end the run
            onProblem_(name, "not enough memory");
        }
    }

    const OnMessage& onMessage_;
    const OnProblem& onProblem_;
};

}  // namespace

void readSources(const std::vector<std::string>& paths, const OnMessage& onMessage,
                 const OnProblem& onProblem) {
    SourceReader reader(onMessage, onProblem);
    for (const std::string& path : paths) reader.read(path);
}

}  // namespace bouncecheck
