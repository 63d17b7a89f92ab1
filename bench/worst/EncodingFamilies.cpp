#include "bench/worst/Families.h"
#include "bench/worst/MessageWriter.h"

namespace bouncecheck::bench {
namespace {

using namespace std::string_view_literals;

std::string coded(std::size_t bytes, std::string_view encoding, std::string_view piece,
                  std::string_view start = "") {
    return repeated(bytes, piece, undeliverable, "Content-Transfer-Encoding: ", encoding, "\n\n",
                    start);
}

std::string text(std::size_t bytes, std::string_view charset, std::string_view piece,
                 std::string_view start = "") {
    return repeated(bytes, piece, undeliverable, "Content-Type: text/plain; charset=", charset,
                    "\n\n", start);
}

std::string html(std::size_t bytes, std::string_view piece, std::string_view start = "") {
    return repeated(bytes, piece, undeliverable, "Content-Type: text/html\n\n", start);
}

/// A short part before one that begins with `start`.
std::string secondPart(std::size_t bytes, std::string_view subtype, std::string_view piece,
                       std::string_view start) {
    return repeated(bytes, piece, undeliverable, "Content-Type: multipart/", subtype,
                    "; boundary=b\n\n--b\n\nx\n--b\n", start);
}

/// 57 bytes of text in base64.
constexpr std::string_view base64Line =
    "c29ycnksIG5vIHN1Y2ggcGVyc29uIGhlcmUgYW55IG1vcmUsIHNvcnJ5IHRvIHNheSBzbyBub3cu\n";

constexpr Family families[] = {
    {"base64", [](std::size_t n) { return coded(n, "base64", base64Line); }},
    {"base64-one-line", [](std::size_t n) { return coded(n, "base64", "c29y"); }},
    {"base64-foreign", [](std::size_t n) { return coded(n, "base64", "c-2.9(y\n"); }},
    {"base64-padding", [](std::size_t n) { return coded(n, "base64", "c==="); }},
    {"base64-line-feeds", [](std::size_t n) { return coded(n, "base64", "CgoK"); }},
    {"base64-windows-1252",
     [](std::size_t n) {
         return coded(n, "base64\nContent-Type: text/plain; charset=windows-1252", "gICA");
     }},
    {"base64-line-ends", [](std::size_t n) { return coded(n, "base64", "Cg0K"); }},
    {"quoted-printable", [](std::size_t n) { return coded(n, "quoted-printable", "=73=6F=72\n"); }},
    {"quoted-printable-soft", [](std::size_t n) { return coded(n, "quoted-printable", "=\n"); }},
    {"quoted-printable-blanks", [](std::size_t n) { return coded(n, "quoted-printable", " "); }},
    {"quoted-printable-signs", [](std::size_t n) { return coded(n, "quoted-printable", "="); }},
    {"uuencode",
     [](std::size_t n) {
         return coded(n, "x-uuencode\n\nbegin 644 x",
                      "M<V]R<GDL(&YO('-U8V@@<&5R<V]N(&AE<F4@86YY(&UO<F4L('-O<G)Y('1O\n");
     }},
    {"uuencode-begins", [](std::size_t n) { return coded(n, "x-uuencode", "begin 6 x\nend\n"); }},
    {"line-feeds", [](std::size_t n) { return repeated(n, "\n", undeliverable, "\n"); }},
    {"carriage-returns", [](std::size_t n) { return repeated(n, "\r", undeliverable, "\n"); }},
    {"line-feeds-alone", [](std::size_t n) { return repeated(n, "\n"); }},
    {"nul-bytes", [](std::size_t n) { return repeated(n, "\0"sv, undeliverable, "\n"); }},
    {"nul-bytes-alone", [](std::size_t n) { return repeated(n, "\0"sv); }},
    {"broken-utf-8", [](std::size_t n) { return text(n, "utf-8", "\xFF"); }},
    {"windows-1252", [](std::size_t n) { return text(n, "windows-1252", "\x80"); }},
    {"koi8-r", [](std::size_t n) { return text(n, "koi8-r", "\xC1 "); }},
    {"koi8-r-line-feeds", [](std::size_t n) { return text(n, "koi8-r", "\n", "\xC1"); }},
    {"koi8-r-long-address",
     [](std::size_t n) { return text(n, "koi8-r", "x", "\xC1\nRCPT To: a@"); }},
    {"quoted-printable-koi8-r",
     [](std::size_t n) {
         return coded(n, "quoted-printable\nContent-Type: text/plain; charset=koi8-r", "\n", "=C1");
     }},
    {"second-line-feeds", [](std::size_t n) { return secondPart(n, "mixed", "\n", "\n"); }},
    {"second-base64-line-feeds",
     [](std::size_t n) {
         return secondPart(n, "mixed", "CgoK", "Content-Transfer-Encoding: base64\n\n");
     }},
    {"both-quoted-printable",
     [](std::size_t n) {
         constexpr std::string_view encoded =
             "\n--b\nContent-Transfer-Encoding: quoted-printable\n\n";
         return MessageWriter(n)
             .add(undeliverable)
             .add("Content-Type: multipart/mixed; boundary=b\n")
             .add(encoded)
             .fillShare("sorry, no ", 3)
             .add(encoded)
             .fill("sorry, yes ")
             .add("\n--b--\n")
             .take();
     }},
    {"second-koi8-r",
     [](std::size_t n) {
         return secondPart(n, "mixed", "sorry ",
                           "Content-Type: text/plain; charset=koi8-r\n\n\xC1");
     }},
    {"report-base64-line-feeds",
     [](std::size_t n) {
         return secondPart(n, "report", "CgoK",
                           "Content-Type: message/delivery-status\n"
                           "Content-Transfer-Encoding: base64\n\n");
     }},
    {"latin1", [](std::size_t n) { return text(n, "iso-8859-1", "\xE9 "); }},
    {"iso-2022-jp", [](std::size_t n) { return text(n, "iso-2022-jp", "\x1B$BF|\x1B(B"); }},
    {"iso-2022-jp-escapes", [](std::size_t n) { return text(n, "iso-2022-jp", "\x1B"); }},
    {"iso-2022-kr", [](std::size_t n) { return text(n, "iso-2022-kr", "\x0E!!\x0F"); }},
    {"utf-7", [](std::size_t n) { return text(n, "utf-7", "+AOk-"); }},
    {"utf-7-signs", [](std::size_t n) { return text(n, "utf-7", "+"); }},
    {"utf-16", [](std::size_t n) { return text(n, "utf-16le", "\x01\x30"); }},
    {"utf-16-halves", [](std::size_t n) { return text(n, "utf-16", "\xD8\x41"); }},
    {"ucs-4", [](std::size_t n) { return text(n, "ucs-4", "\0\x60\x70\0"sv); }},
    {"gb18030", [](std::size_t n) { return text(n, "gb18030", "\x81\x30\x81\x30"); }},
    {"unknown-charset", [](std::size_t n) { return text(n, "x-none", "\xFF"); }},
    {"html-open", [](std::size_t n) { return html(n, "<"); }},
    {"html-open-tags", [](std::size_t n) { return html(n, "<a x='<!--"); }},
    {"html-nested", [](std::size_t n) { return html(n, "<div><b>"); }},
    {"html-breaks", [](std::size_t n) { return html(n, "<p>"); }},
    {"html-ampersands", [](std::size_t n) { return html(n, "&"); }},
    {"html-references", [](std::size_t n) { return html(n, "&#1;&eacute;"); }},
    {"html-long-references", [](std::size_t n) { return html(n, "&#00000000000000000000"); }},
    {"html-scripts", [](std::size_t n) { return html(n, "<script></scrip></style>"); }},
    {"html-comments", [](std::size_t n) { return html(n, "<!-- -- >"); }},
    {"html-windows-1252",
     [](std::size_t n) {
         return repeated(n, "\x80", undeliverable,
                         "Content-Type: text/html; charset=windows-1252\n\n");
     }},
    {"html-pre-line-feeds", [](std::size_t n) { return html(n, "\n", "<pre>x"); }},
    {"html-pre", [](std::size_t n) { return html(n, "<pre>\n"); }},
};

}  // namespace

std::span<const Family> encodingFamilies() noexcept { return families; }

}  // namespace bouncecheck::bench
