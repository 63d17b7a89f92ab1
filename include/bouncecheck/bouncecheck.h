#pragma once

#include <bouncecheck/BounceType.h>
#include <bouncecheck/Export.h>
#include <bouncecheck/Facts.h>
#include <bouncecheck/Limits.h>
#include <bouncecheck/LogBase.h>
#include <bouncecheck/LogNull.h>
#include <bouncecheck/LogTrace.h>
#include <bouncecheck/Message.h>
#include <bouncecheck/Recipient.h>
#include <bouncecheck/Rule.h>
#include <bouncecheck/TraceTree.h>
#include <bouncecheck/Verdict.h>

#include <memory>
#include <string_view>

/// BounceCheck reports what a returned or automatic e-mail means: whether it is a bounce,
/// of which kind, for which address, and why.
///
///     #include <bouncecheck/bouncecheck.h>
///     #include <iostream>
///     #include <iterator>
///
///     int main() {
///         const std::string mail(std::istreambuf_iterator<char>(std::cin), {});
///         const bouncecheck::Verdict verdict = bouncecheck::classify(mail);
///         std::cout << bouncecheck::bounceTypeName(verdict.type) << ' ' << verdict.label() << ' '
///                   << verdict.address << '\n';
///     }
///
/// **Verdicts.** A `Verdict` has the type ("hard", "auto-reply", ...), the address that
/// failed or answered, the rule that decided with what it means and what to do about it,
/// the phrase that it found, and the text that it was found in. `BOUNCE_NONE` is a verdict
/// too: the message is no bounce.
///
/// **More of a message.** Parse it once into a `Message`; then `Classifier::classify` gives
/// the verdict, `recipientsOf` everybody whom it says something about (whether the mail
/// reached them, why not, and what to do), `factsOf` what it states in other standard fields
/// (a report, the message that came back), and `Message::field` its own header.
///
/// **Why.** Give `Classifier::classify` a `LogTrace`: it records each step, and `traceTree`
/// makes a text of it. A verdict without a trace takes less time.
///
/// **Bytes.** Sizes and places count bytes. A message is bytes in any charset, with LF or CRLF
/// line ends; what is handed out is UTF-8, unless its charset is unknown or does not fit
/// its bytes. It may hold control characters, which terminals obey, and is not fit for a
/// terminal or a page as it is.
///
/// **Bad input** is input: nothing in a message is an error. What is missing reads as
/// empty, and what is damaged is read as far as it goes. Time and memory are linear in the
/// size of the message; Limits.h says what of an unreasonable message is left unread. The
/// library prints nothing, never ends the program, and opens no file, though the C library may
/// load a table of its own for a rare charset (iconv). It throws std::bad_alloc when memory runs
/// out, and nothing else.
///
/// **Ownership.** A `Verdict`, `Recipient` and `Facts` are values that outlive message and
/// classifier. Names of types and rules are constants.
///
/// **Threads.** There is no state but that of the objects, and the conversions of charsets that a
/// thread keeps until it ends. Each object serves one thread at a time; distinct objects, and the
/// functions, may be used on any number of threads.
///
/// The classes in <bouncecheck/classes/> are another way to the same verdicts, by
/// operations that fill buffers. Programs in C have <bouncecheck/bouncecheck_c.h>.
namespace bouncecheck {

class MessageClassifier;

/// Classifies messages, one at a time, and keeps the memory of one for the next. A classifier
/// that was moved from can only be destroyed or assigned to.
class BOUNCECHECK_EXPORT Classifier {
public:
    Classifier();
    Classifier(Classifier&& other) noexcept;
    Classifier& operator=(Classifier&& other) noexcept;
    ~Classifier();

    /// The verdict on the message with these bytes.
    Verdict classify(std::string_view bytes);
    Verdict classify(const Message& message);
    /// The same, with each step written to `log`. What `log` throws is ignored.
    Verdict classify(const Message& message, LogBase& log);

private:
    std::unique_ptr<MessageClassifier> classifier_;
};

/// The verdict on one message.
BOUNCECHECK_EXPORT Verdict classify(std::string_view bytes);

}  // namespace bouncecheck
