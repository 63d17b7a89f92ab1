#include <algorithm>
#include <string>

#include "bench/worst/Families.h"
#include "bench/worst/MessageWriter.h"

namespace bouncecheck::bench {
namespace {

/// Notices whose text is read for recipients, up to a limit, and headers and reports without
/// one. Their cost shows in the forms of output that have recipients.
std::string named(std::size_t bytes, std::string_view piece, std::string_view head = "") {
    return repeated(bytes, piece, undeliverable, head, "\ncould not be delivered to\n\n");
}

/// One line after the other with an address of its own.
std::string numbered(std::size_t bytes, std::string_view before, std::string_view after,
                     std::string_view head) {
    MessageWriter writer(bytes);
    writer.add(undeliverable).add(head);
    std::size_t number = 0;
    std::string line;
    return writer
        .fillFrom([&]() -> const std::string& {
            line.assign(before).append(std::to_string(number++)).append("@x.example").append(after);
            return line;
        })
        .add("\n")
        .take();
}

constexpr std::string_view inReport =
    "Content-Type: multipart/report; boundary=b\n\n"
    "--b\nContent-Type: message/delivery-status\n\n";

constexpr std::string_view inBoth = "Content-Type: multipart/report; boundary=b\n\n--b\n\n";
constexpr std::string_view thenReport = "--b\nContent-Type: message/delivery-status\n\n";

constexpr Family families[] = {
    {"recipients-alone",
     [](std::size_t n) { return numbered(n, "", "\n", "\nThese addresses failed:\n"); }},
    {"recipients-with-replies",
     [](std::size_t n) { return numbered(n, "<", ">: 550 5.1.1 no such user\n", "\n"); }},
    {"recipients-in-one-line",
     [](std::size_t n) { return numbered(n, "", ",", "\nThese addresses failed:\n"); }},
    {"recipients-in-sentences",
     [](std::size_t n) { return numbered(n, "delivery to ", " failed. ", "\n"); }},
    {"recipients-of-commands",
     [](std::size_t n) { return numbered(n, ">>> RCPT TO:<", ">\n<<< 550 no\n", "\n"); }},
    {"recipients-of-labels",
     [](std::size_t n) { return numbered(n, "Failed recipient: ", "\n", "\n"); }},
    {"recipients-sent-on",
     [](std::size_t n) { return numbered(n, "<a@x.example>: failed\n  RCPT TO:<", ">\n", "\n"); }},
    {"recipients-of-the-header",
     [](std::size_t n) { return numbered(n, "X-Failed-Recipients: ", "\n", ""); }},
    // The notice is asked for a reason, which no recipient has of its own.
    {"recipients-without-a-reason",
     [](std::size_t n) {
         std::string head(inBoth);
         for (std::size_t i = 0; i < std::min<std::size_t>(30'000, n / 50); ++i) head += "Sorry.\n";
         return numbered(n, "Final-Recipient: rfc822;", "\nAction: failed\n\n",
                         head.append(thenReport));
     }},
    // The sentence that has one is about many addresses.
    {"recipients-of-one-sentence",
     [](std::size_t n) {
         std::string head = std::string(inBoth) + "user unknown";
         const std::size_t others = std::min<std::size_t>(20'000, n / 50);
         for (std::size_t i = 0; i < others; ++i) head += " a@y.example";
         return numbered(n, "Final-Recipient: rfc822;", "\nAction: failed\n\n",
                         head.append("\n\n").append(thenReport));
     }},
    {"recipients-of-a-report",
     [](std::size_t n) {
         return numbered(n, "Final-Recipient: rfc822;", "\nAction: failed\n\n", inReport);
     }},
    {"recipients-to-many", [](std::size_t n) { return numbered(n, "To: ", "\n", ""); }},
    {"recipients-at-signs", [](std::size_t n) { return named(n, "@"); }},
    {"recipients-quotes", [](std::size_t n) { return named(n, "\"@"); }},
    {"recipients-dots", [](std::size_t n) { return named(n, "a.@"); }},
    {"recipients-brackets", [](std::size_t n) { return named(n, "<a@b<"); }},
    {"recipients-cues", [](std::size_t n) { return named(n, "delivery to user unknown "); }},
    {"recipients-codes", [](std::size_t n) { return named(n, "550 5.1.1-"); }},
    {"recipients-lines", [](std::size_t n) { return named(n, "\n"); }},
    {"recipients-paragraphs", [](std::size_t n) { return named(n, "a@b.example no\n\n"); }},
    {"recipients-headers", [](std::size_t n) { return named(n, "A: b\n"); }},
};

}  // namespace

std::span<const Family> recipientFamilies() noexcept { return families; }

}  // namespace bouncecheck::bench
