#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <ostream>
#include <span>
#include <streambuf>
#include <string>
#include <string_view>
#include <utility>

#include "tool/Classify.h"
#include "tool/output/Output.h"
#include "tool/sources/FileContent.h"
#include "tool/sources/FileKind.h"
#include "tool/sources/MboxReader.h"
#include "tool/sources/PeekedStream.h"

// What the page in the browser does with files: the page of --html is made of them. The host
// (page/worker.js) reads and writes for the module, which never waits.

extern "C" {

/// Fills the front of `room` with the next bytes of the file; 0 at its end.
[[clang::import_module("host"), clang::import_name("read")]] std::size_t hostRead(char* room,
                                                                                  std::size_t size);
/// Takes the next bytes of the page.
[[clang::import_module("host"), clang::import_name("write")]] void hostWrite(const char* bytes,
                                                                             std::size_t size);
/// Hears that a message is in the page. 0 when the reading should end.
[[clang::import_module("host"), clang::import_name("classified")]] int hostClassified();
/// Hears why a message of the file, or all of it where `index` is 0, could not be read.
[[clang::import_module("host"), clang::import_name("problem")]] void hostProblem(double index,
                                                                                 const char* reason,
                                                                                 std::size_t size);

}  // extern "C"

namespace bouncecheck {
namespace {

class HostStream final : public InputStream {
public:
    explicit HostStream(double size) : left_(static_cast<std::uint64_t>(size)) {}

    std::size_t read(std::span<char> room) override {
        const std::size_t count = hostRead(room.data(), room.size());
        left_ -= std::min<std::uint64_t>(left_, count);
        return count;
    }
    std::optional<std::uint64_t> sizeLeft() const override { return left_; }

private:
    std::uint64_t left_;
};

/// Hands the page out in pieces.
class HostBuffer final : public std::streambuf {
public:
    ~HostBuffer() override { flush(); }

protected:
    int_type overflow(int_type c) override {
        if (!traits_type::eq_int_type(c, traits_type::eof())) {
            const char one = traits_type::to_char_type(c);
            xsputn(&one, 1);
        }
        return traits_type::not_eof(c);
    }
    std::streamsize xsputn(const char* bytes, std::streamsize size) override {
        constexpr std::size_t piece = std::size_t{1} << 18;
        text_.append(bytes, static_cast<std::size_t>(size));
        if (text_.size() >= piece) flush();
        return size;
    }

private:
    void flush() {
        hostWrite(text_.data(), text_.size());
        text_.clear();
    }

    std::string text_;
};

/// A page that is being made.
class Page {
public:
    Page() : out_(&buffer_), output_(makeHtmlOutput(out_)), classifier_(output_->wanted()) {}

    void add(const std::string& name, double size) {
        PeekedStream stream(std::make_unique<HostStream>(size));
        const FileContent& content = stream.content();
        if (content.kind != FileContent::Kind::mail) {
            report(0, "is " + std::string(content.name) + ", not mail");
            return;
        }
        constexpr std::size_t largestMessage = std::size_t{64} << 20;
        MboxReader reader(stream, largestMessage, kindOfMember(name));
        while (auto message = reader.next()) {
            if (message->tooLarge) {
                report(message->index, "the message is larger than 64 MiB");
                continue;
            }
            Classified classified = asRead({.place = {name, message->index, reader.isMailbox()},
                                            .bytes = std::move(message->bytes)});
            classifier_.classify(classified);
            output_->show(classified);
            if (!hostClassified()) return;
        }
    }

    void finish() { output_->finish(); }

private:
    static void report(std::uint64_t index, std::string_view reason) {
        hostProblem(static_cast<double>(index), reason.data(), reason.size());
    }

    HostBuffer buffer_;
    std::ostream out_;
    std::unique_ptr<Output> output_;
    ToolClassifier classifier_;
};

struct Exchange {
    std::optional<Page> page;
    std::string name;
};

Exchange& exchange() {
    static Exchange only;
    return only;
}

}  // namespace
}  // namespace bouncecheck

extern "C" {

/// Begins a page.
[[clang::export_name("page_begin")]] void page_begin() { bouncecheck::exchange().page.emplace(); }

/// Room for the name of the next file, in UTF-8.
[[clang::export_name("page_name")]] char* page_name(std::size_t size) {
    std::string& name = bouncecheck::exchange().name;
    name.resize(size);
    return name.data();
}

/// Adds the messages of a file of `size` bytes, which the host then reads.
[[clang::export_name("page_add")]] void page_add(double size) {
    bouncecheck::Exchange& exchange = bouncecheck::exchange();
    exchange.page->add(exchange.name, size);
}

/// Writes the rest of the page.
[[clang::export_name("page_finish")]] void page_finish() {
    bouncecheck::exchange().page->finish();
    bouncecheck::exchange().page.reset();
}

}  // extern "C"
