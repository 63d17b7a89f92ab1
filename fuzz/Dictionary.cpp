// Prints the words that libFuzzer puts into inputs: the literals of the tables,
// and what mail is made of.

#include <cstdio>

#include "bench/support/Literals.h"

namespace {

constexpr const char* mailWords[] = {
    "From: ",
    "To: ",
    "Subject: ",
    "Content-Type: ",
    "Content-Transfer-Encoding: ",
    "Content-Disposition: attachment",
    "multipart/report",
    "multipart/mixed; boundary=b\n\n--b\n",
    "multipart/digest",
    "message/delivery-status",
    "message/feedback-report",
    "message/disposition-notification",
    "message/rfc822",
    "text/rfc822-headers",
    "text/html",
    "text/plain; charset=",
    "\n--b\n",
    "--b--",
    "base64",
    "quoted-printable",
    "x-uuencode",
    "begin 644 x\n",
    "=?utf-8?q?",
    "=?iso-2022-jp?b?",
    "?=",
    "Action: failed",
    "Final-Recipient: rfc822;",
    "Diagnostic-Code: smtp;",
    "Feedback-Type: abuse",
    "Disposition: ;displayed",
    "X-Autoreply: yes",
    "iso-2022-jp",
    "utf-7",
    "utf-16",
    "&amp;",
    "&#x41;",
    "<!--",
    "<script>",
    "<pre>",
    "<br>",
    "boundary*0*=utf-8''",
    "\n\n",
    "\r\n",
    "\n ",
};

void print(std::string_view word) {
    // Longer ones are not taken.
    constexpr std::size_t longest = 64;
    std::putchar('"');
    for (const char c : word.substr(0, longest)) {
        std::printf("\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
    }
    std::puts("\"");
}

}  // namespace

int main() {
    for (const char* word : mailWords) print(word);
    for (const std::string& literal : bouncecheck::bench::tableLiterals()) print(literal);
}
