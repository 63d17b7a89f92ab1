#include "StoredModule.h"

#include <nanobind/stl/string_view.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <utility>

#include "ArrowCapsules.h"
#include "StoredMessages.h"
#include "tool/sources/FileContent.h"

namespace nb = nanobind;

namespace bouncecheck::python {
namespace {

/// What a function of Python returns when it is asked for bytes: some of them, none at the end, or
/// a text that says why there are none. Nothing else needs Python's lock.
class PythonStream final : public InputStream {
public:
    explicit PythonStream(nb::callable read) : readMore_(std::move(read)) {}

    std::size_t read(std::span<char> room) override {
        if (unread_.empty()) fill();
        const std::size_t size = std::min(room.size(), unread_.size());
        std::memcpy(room.data(), unread_.data(), size);
        unread_.remove_prefix(size);
        return size;
    }

private:
    void fill() {
        const nb::gil_scoped_acquire acquired;
        const nb::object more = readMore_(pieceSize);
        if (nb::isinstance<nb::str>(more)) throw ReadError(nb::cast<nb::str>(more).c_str());
        piece_ = nb::cast<nb::bytes>(more);
        unread_ = {piece_.c_str(), piece_.size()};
    }

    static constexpr std::size_t pieceSize = std::size_t{1} << 20;

    nb::callable readMore_;
    nb::bytes piece_;
    std::string_view unread_;
};

/// A file that is read by a function of Python.
class StoredFile {
public:
    /// All of it. What it is follows from its path and its content.
    StoredFile(nb::callable read, std::string_view path, std::size_t maxMessageSize)
        : stream_(std::move(read)),
          messages_(stream_, maxMessageSize, kindOfMember(path), StoredMessages::Stretch()) {}
    /// A stretch of a mailbox.
    StoredFile(nb::callable read, std::uint64_t begin, std::uint64_t end,
               std::size_t maxMessageSize)
        : stream_(std::move(read)),
          messages_(stream_, maxMessageSize, FileKind::mailboxPart, {begin, end}) {}

    nb::object next(std::size_t mostRows, std::size_t mostBytes) {
        std::optional<ArrowColumn> rows;
        {
            const nb::gil_scoped_release released;
            rows = messages_.next(mostRows, mostBytes);
        }
        if (!rows) return nb::none();
        return capsulesOf(*std::move(rows));
    }

private:
    PythonStream stream_;
    StoredMessages messages_;
};

/// The messages of a file that is read by a function of Python, one by one.
class MailFile {
public:
    /// `isMessage`: it is one, whatever its path says.
    MailFile(nb::callable read, std::string_view path, bool isMessage, std::size_t maxMessageSize)
        : stream_(std::move(read)),
          reader_(stream_, maxMessageSize, isMessage ? FileKind::message : kindOfName(path)) {}

    /// The number of the next message and its bytes, or None for one that is too large; None at
    /// the end; or a text, when the function has given one.
    nb::object next() {
        std::optional<MboxReader::Message> message;
        try {
            const nb::gil_scoped_release released;
            message = reader_.next();
        } catch (const ReadError& error) {
            return nb::str(error.what());
        }
        if (!message) return nb::none();
        const std::string& bytes = message->bytes;
        if (message->tooLarge) return nb::make_tuple(message->index, nb::none());
        return nb::make_tuple(message->index, nb::bytes(bytes.data(), bytes.size()));
    }

private:
    PythonStream stream_;
    MboxReader reader_;
};

/// Why what was unpacked and begins so is not read as mail; "" where it is.
nb::str foreignContent(const nb::bytes& first) {
    const FileContent content = contentOf({first.c_str(), std::min(first.size(), decisiveBytes)});
    if (content.kind == FileContent::Kind::mail) return nb::str("");
    const bool isPacked =
        content.kind == FileContent::Kind::gzip || content.kind == FileContent::Kind::compressed;
    const std::string problem = "is " + std::string(content.name) +
                                (isPacked ? ", which is not unpacked here" : ", not mail");
    return nb::str(problem.c_str());
}

}  // namespace

void defineStored(nb::module_& module) {
    nb::class_<StoredFile>(module, "StoredFile")
        .def(nb::init<nb::callable, std::string_view, std::size_t>(), nb::arg("read"),
             nb::arg("path"), nb::arg("most"))
        .def(nb::init<nb::callable, std::uint64_t, std::uint64_t, std::size_t>(), nb::arg("read"),
             nb::arg("begin"), nb::arg("end"), nb::arg("most"))
        .def("next", &StoredFile::next, nb::arg("rows"), nb::arg("bytes"));
    nb::class_<MailFile>(module, "MailFile")
        .def(nb::init<nb::callable, std::string_view, bool, std::size_t>(), nb::arg("read"),
             nb::arg("path"), nb::arg("is_message"), nb::arg("most"))
        .def("next", &MailFile::next);
    module.def("start_of_stream",
               [](std::uint64_t begin) { return StoredMessages::startOfStream({.begin = begin}); });
    module.def("can_be_divided", [](std::string_view path, const nb::bytes& first) {
        return canBeDivided(path, {first.c_str(), first.size()});
    });
    module.def("foreign_content", &foreignContent);
}

}  // namespace bouncecheck::python
