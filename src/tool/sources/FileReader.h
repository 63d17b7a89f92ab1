#pragma once

#include <memory>
#include <new>
#include <string>
#include <utility>

#include "tool/sources/FileContent.h"
#include "tool/sources/FileKind.h"
#include "tool/sources/InputStream.h"
#include "tool/sources/Sources.h"
#include "tool/sources/UnpackedSize.h"

namespace bouncecheck {

/// Runs `read`; what could not be read becomes a problem with `name`.
template <class Read>
void reportingProblems(const OnProblem& onProblem, const std::string& name, Read&& read) {
    try {
        read();
    } catch (const ReadError& error) {
        onProblem(name, error.what());
    } catch (const std::bad_alloc&) {  // one huge file does not end the run
        onProblem(name, "not enough memory; the rest of it was skipped");
    }
}

/// The stretch of the whole work that something takes, from 0 to 1.
struct Stretch {
    double begin = 0;
    double size = 1;

    Stretch part(std::size_t i, std::size_t count) const noexcept {
        const double share = size / static_cast<double>(count);
        return {begin + share * static_cast<double>(i), share};
    }
};

/// A file that is read: its path, with that of the member behind it in an archive, and
/// what is known of it.
struct FileToRead {
    std::string name;
    FileKind kind = FileKind::byContent;
    Stretch stretch = {};
};

/// Hands out the messages of one file: unpacks it, goes through archives, divides
/// mailboxes, and reports what is no mail.
class FileReader {
public:
    /// All three have to live as long as the reader.
    FileReader(const SourceOptions& options, const OnMessage& onMessage, const OnProblem& onProblem)
        : options_(options), onMessage_(onMessage), onProblem_(onProblem) {}

    /// Reads `stream` to its end. Throws ReadError after all messages that could be
    /// read; problems with the members of an archive are reported instead.
    void read(const FileToRead& file, std::unique_ptr<InputStream> stream) {
        UnpackedSize size;
        read(file, std::move(stream), 0, size);
    }

private:
    void read(const FileToRead& file, std::unique_ptr<InputStream> stream, unsigned layers,
              UnpackedSize& size);
    void readMembers(const FileToRead& file, InputStream& packed, FileContent::Kind format,
                     unsigned layers, UnpackedSize& size);
    void readMessages(const FileToRead& file, InputStream& stream);

    const SourceOptions& options_;
    const OnMessage& onMessage_;
    const OnProblem& onProblem_;
};

}  // namespace bouncecheck
