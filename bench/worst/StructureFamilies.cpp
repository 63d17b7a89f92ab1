#include <bouncecheck/Limits.h>
#include "bench/worst/Families.h"
#include "bench/worst/MessageWriter.h"

namespace bouncecheck::bench {
namespace {

constexpr std::string_view mixed = "Content-Type: multipart/mixed; boundary=b\n\n";
constexpr std::string_view report = "Content-Type: multipart/report; boundary=b\n\n";

std::string partsOf(std::size_t bytes, std::string_view part) {
    return repeated(bytes, part, undeliverable, mixed);
}

std::string nested(std::size_t bytes, std::string_view type) {
    MessageWriter writer(bytes);
    writer.add(undeliverable);
    std::size_t depth = 0;
    writer.fillFrom([&] {
        const std::string boundary = "b" + std::to_string(depth++);
        return std::string("Content-Type: multipart/")
            .append(type)
            .append("; boundary=" + boundary + "\n\n--" + boundary + "\n");
    });
    return writer.take();
}

/// As many multiparts as are taken apart, whose boundaries differ in their last
/// bytes only, and lines that are none of them but in those.
std::string nearBoundaries(std::size_t bytes) {
    const std::string common(60, '-');
    MessageWriter writer(bytes);
    writer.add(undeliverable);
    for (int depth = 100; depth < 170; ++depth) {
        const std::string boundary = common + std::to_string(depth);
        writer.add("Content-Type: multipart/mixed; boundary=\"" + boundary + "\"\n\n--" + boundary +
                   "\n");
    }
    return writer.fill("--" + common + "999\n").take();
}

std::string enclosed(std::size_t bytes, std::string_view head, std::string_view piece) {
    return MessageWriter(bytes)
        .add(undeliverable)
        .add(mixed)
        .add("--b\n\nSee below.\n--b\nContent-Type: message/rfc822\n\n")
        .add(head)
        .fill(piece)
        .add("\n--b--\n")
        .take();
}

std::string secondOfReport(std::size_t bytes, std::string_view type, std::string_view head,
                           std::string_view piece) {
    return MessageWriter(bytes)
        .add(undeliverable)
        .add(report)
        .add("--b\n\nSorry.\n--b\nContent-Type: ")
        .add(type)
        .add("\n\n")
        .add(head)
        .fill(piece)
        .add("\n--b--\n")
        .take();
}

std::string reportOf(std::size_t bytes, std::string_view fields) {
    return secondOfReport(bytes, "message/delivery-status", "", fields);
}

/// Fields as long as values can be; `start` begins each on a line of its own.
auto longValues(std::string_view start, std::string_view piece) {
    return [=, written = std::size_t{0}]() mutable {
        const std::string_view next = written == 0 ? start : piece;
        written += next.size();
        if (written + piece.size() > limits::fieldValue) written = 0;
        return next;
    };
}

/// A report with a part of that type, of long fields.
std::string longFields(std::size_t bytes, std::string_view type, std::string_view start,
                       std::string_view piece) {
    return MessageWriter(bytes)
        .add(undeliverable)
        .add(report)
        .add("--b\n\nSorry.\n--b\nContent-Type: message/")
        .add(type)
        .add("\n")
        .fillFrom(longValues(start, piece))
        .add("\n--b--\n")
        .take();
}

/// Two bodies that differ in nothing, or in the last byte.
std::string twins(std::size_t bytes, std::string_view end) {
    return MessageWriter(bytes)
        .add(undeliverable)
        .add(mixed)
        .add("--b\n\n")
        .fillShare("sorry, no ", 2)
        .add("\n--b\n\n")
        .fillShare("sorry, no ", 1)
        .add(end)
        .add("\n--b--\n")
        .take();
}

constexpr Family families[] = {
    {"dash-lines", [](std::size_t n) { return partsOf(n, "-\n"); }},
    {"parts", [](std::size_t n) { return partsOf(n, "--b\n\n"); }},
    {"parts-with-header", [](std::size_t n) { return partsOf(n, "--b\na:\n\nx\n"); }},
    {"parts-of-headers", [](std::size_t n) { return partsOf(n, "--b\nContent-Type: a/b\n"); }},
    {"parts-of-long-types",
     [](std::size_t n) {
         return partsOf(n, "--b\nContent-Type: a/b; x=" + std::string(4000, '\x80') + "\n\n");
     }},
    {"closing-boundaries", [](std::size_t n) { return partsOf(n, "--b--\n"); }},
    {"longer-boundaries", [](std::size_t n) { return partsOf(n, "--bx\n"); }},
    {"dash-lines", [](std::size_t n) { return partsOf(n, "--\n"); }},
    {"boundary-blanks", [](std::size_t n) { return partsOf(n, "--b                    x\n"); }},
    {"nested-multiparts", [](std::size_t n) { return nested(n, "mixed"); }},
    {"nested-digests", [](std::size_t n) { return nested(n, "digest"); }},
    {"near-boundaries", nearBoundaries},
    {"enclosed-message",
     [](std::size_t n) { return enclosed(n, "To: a@b.example\n\n", "sorry, no\n"); }},
    {"enclosed-recipients", [](std::size_t n) { return enclosed(n, "To: ", "\"a\", "); }},
    {"enclosed-fields", [](std::size_t n) { return enclosed(n, "", "To:\n"); }},
    {"returned-header",
     [](std::size_t n) { return secondOfReport(n, "text/rfc822-headers", "To: ", "<a"); }},
    {"report-fields", [](std::size_t n) { return reportOf(n, "X-Field: 5.0.0\n"); }},
    {"report-groups", [](std::size_t n) { return reportOf(n, "a:b\n\n"); }},
    {"report-lines", [](std::size_t n) { return reportOf(n, "no field\n"); }},
    {"report-recipients",
     [](std::size_t n) { return reportOf(n, "Final-Recipient: x;a@b.example\n\n"); }},
    {"report-long-values",
     [](std::size_t n) {
         return longFields(n, "delivery-status",
                           "\n\nFinal-Recipient: x;a@b.example\nDiagnostic-Code: ", "sorry, no ");
     }},
    {"report-eight-bit-values",
     [](std::size_t n) {
         return longFields(n, "delivery-status", "\n\nFinal-Recipient: x;", "\x80");
     }},
    {"complaint-long-values",
     [](std::size_t n) { return longFields(n, "feedback-report", "\nX: ", "sorry, no "); }},
    {"complaint-eight-bit-values",
     [](std::size_t n) { return longFields(n, "feedback-report", "\nX: ", "\x80"); }},
    {"complaint-encoded-words",
     [](std::size_t n) {
         return longFields(n, "feedback-report", "\nX: ", "=?utf-16?b?TgBOAE4A?= ");
     }},
    {"failed-recipients",
     [](std::size_t n) {
         return repeated(n, "X-Failed-Recipients: a@b.example, c@d.example\n", undeliverable);
     }},
    {"failed-recipients-long",
     [](std::size_t n) {
         return MessageWriter(n)
             .add("From: a@b.example")
             .fillFrom(longValues("\nX-Failed-Recipients: a@", "\x80"))
             .add("\n\nhello\n")
             .take();
     }},
    {"twin-bodies", [](std::size_t n) { return twins(n, ""); }},
    {"unlike-bodies", [](std::size_t n) { return twins(n, "x"); }},
};

}  // namespace

std::span<const Family> structureFamilies() noexcept { return families; }

}  // namespace bouncecheck::bench
