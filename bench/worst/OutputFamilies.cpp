#include "bench/worst/Families.h"
#include "bench/worst/MessageWriter.h"
#include "bounce/tables/providers.h"

namespace bouncecheck::bench {
namespace {

std::string lines(std::size_t bytes, std::string_view piece, std::string_view head = "") {
    return repeated(bytes, piece, undeliverable, head, "\n");
}

constexpr std::string_view unknownCharset = "Content-Type: text/plain; charset=x-unknown\n";
constexpr std::string_view utf8 = "Content-Type: text/plain; charset=utf-8\n";

constexpr Family families[] = {
    {"print-8-bit", [](std::size_t n) { return lines(n, "\xFF", unknownCharset); }},
    {"print-broken-characters",
     [](std::size_t n) { return lines(n, "\xE2\x80\xF0\x9F", unknownCharset); }},
    {"print-controls", [](std::size_t n) { return lines(n, "\x01"); }},
    {"print-high-controls", [](std::size_t n) { return lines(n, "\xC2\x9B", utf8); }},
    {"print-overrides", [](std::size_t n) { return lines(n, "\xE2\x80\xAE", utf8); }},
    {"print-quotes", [](std::size_t n) { return lines(n, "\"\\"); }},
    {"print-short-lines", [](std::size_t n) { return lines(n, "\xFF\n", unknownCharset); }},
    {"print-wide", [](std::size_t n) { return lines(n, "\xE4\xBD\xA0", utf8); }},
    {"print-marks", [](std::size_t n) { return lines(n, "\xCC\x81", utf8); }},
    // Two steps of the trace hold the whole text.
    {"print-text-twice",
     [](std::size_t n) {
         return repeated(n, "\x01", "From: ", providers::aolMailerDaemon,
                         "\nSubject: Mail Delivery Problem\n\n");
     }},
    // Only the subject has a phrase of the rule's tables, so that the text is searched.
    {"explain-phrase-of-subject",
     [](std::size_t n) {
         return repeated(n, "out of th", "Subject: Abwesend\n\nOriginal message\n");
     }},
    {"print-failed-recipients",
     [](std::size_t n) {
         return repeated(n, "X-Failed-Recipients: \"\\\\\"@x.example, a@y.example\n",
                         undeliverable);
     }},
};

}  // namespace

std::span<const Family> outputFamilies() noexcept { return families; }

}  // namespace bouncecheck::bench
