#include "pages/ReasonsPage.h"

#include <bouncecheck/Advice.h>
#include <bouncecheck/Reason.h>

#include <string_view>

#include "pages/Markdown.h"
#include "reasons/AdviceFor.h"
#include "reasons/CodeReasons.h"
#include "reasons/PhraseReasons.h"
#include "reasons/ReasonFinder.h"
#include "reasons/TopicWords.h"

namespace bouncecheck {
namespace {

constexpr std::string_view introduction = R"(# Reasons and advices

Why mail failed at a recipient, what each reason means, what to do about it, and which
phrases and codes of replies are behind it. `bouncecheck --explain` prints the reason and
its evidence for a message at hand; `--by recipient`, `--reason` and `--advice` list
recipients by them. [labels.md](labels.md) describes the verdicts on whole messages.

## How a reason is found

The words of a reply count before its codes, since mail systems give wrong codes more often
than wrong words. The first of these that holds decides:

1. a phrase of the reply that says why, whatever the code is;
2. a status code that is definite;
3. a phrase that says why unless such a code says more;
4. a phrase that only hints at the reason, unless a status code of the reply says more;
5. the same phrases, and a definite code, in what the whole message says to people;
6. a status code that many kinds of failures have in common;
7. a reply code of SMTP.

Where a report has only the first line of a reply, the words of the message to people are read for
the other lines before step 3.

A phrase that only hints at a refusal ("blocked") is about the sending host where that host's
address stands beside it, and then the reason is `reputation`. One that hints that something
does not exist, or is closed for good, is as good as a clear one where it is said of the
recipient's own mailbox or domain ("User ann does not exist"), or where a sentence begins with a
mailbox ("La cuenta no existe"). Even a clear one is in doubt where a mailbox is not all that it
is about ("License for user not found", "user not found: LDAP timeout") or where it is only
supposed ("if the mailbox was deleted"), and no definite status settles it. A word ("SPF") says
what is meant where a hint or a common code is all that there is.

Some systems put the same words in front of any reply of another one ("Unknown address error
550-'mailbox full'"). Only the reply behind them counts.

That a host was not found is in doubt where another one is named than that of the recipient's
domain, such as a relay that the sender's mail goes through ("lookup relay.example: no such host").

Letter case, and how a reply is folded into lines, do not matter; `@` in a phrase stands for
any address. The first number of a status code (`5.1.1`) says whether a later try may
succeed; the others, which the tables list, say why.

This page is made from the tables of the code:
`cmake --build --preset test --target pages`.

## Advices

| advice | means |
|---|---|
)";

constexpr std::string_view aboutAdvice = R"(
The advice comes from the reason and from how sure it is. `suppress` takes a phrase or a
definite code that says that the mailbox or its domain is gone, in a failure that is
permanent; in doubt it is `retry`. A complaint has the advice `unsubscribe` and no reason.
The advice beside a status code below is that for a permanent failure whose reply says
nothing else.
)";

/// The advice for a failure of which only the status is known.
Advice adviceOn(std::string_view status) {
    Reply reply;
    reply.status = status;
    return adviceFor(reply.outcome, reasonOf(reply));
}

std::string statusTable(Reason reason) {
    std::string rows;
    for (const StatusRow& row : allStatusRows()) {
        if (row.reason != reason) continue;
        const std::string_view detail = row.code.substr(1);  // behind the "X" of the class
        const bool isSubject = detail.find('.', 1) == std::string_view::npos;
        const std::string status = "5" + std::string(detail) + (isSubject ? ".999" : "");
        rows += "| " + code(std::string(row.code) + (isSubject ? ".*" : "")) + " | " +
                cell(row.name) + " | " + (row.trust == Trust::definite ? "yes" : "no") + " | " +
                std::string(nameOf(adviceOn(status))) + " |\n";
    }
    if (rows.empty()) return rows;
    return "\n| status code | means | definite | advice |\n|---|---|---|---|\n" + rows;
}

std::string replyCodes(Reason reason) {
    std::string codes;
    for (const ReplyCodeRow& row : allReplyCodeRows()) {
        if (row.reason == reason) codes += (codes.empty() ? "" : ", ") + code(row.code);
    }
    return codes.empty() ? codes : "\nReply codes without words: " + codes + ".\n";
}

std::string phrases(Reason reason, PhraseKind kind, std::string_view title) {
    std::string lines;
    for (const PhraseRow& row : phraseRows(kind)) {
        if (row.reason == reason) lines.append(row.phrase).append("\n");
    }
    if (lines.empty()) return lines;
    return "\n" + std::string(title) + ":\n\n```text\n" + lines + "```\n";
}

std::string topics(Reason reason) {
    std::string words;
    for (const PhraseRow& row : allTopicWords()) {
        if (row.reason == reason) words += (words.empty() ? "" : ", ") + code(row.phrase);
    }
    return words.empty() ? words : "\nWords of a refusal that says nothing else: " + words + ".\n";
}

std::string sectionOf(const ReasonMeaning& meaning) {
    return "\n## " + std::string(meaning.name) + "\n\n" + std::string(meaning.meaning) +
           "\n\n**What to do:** " + std::string(meaning.action) + "\n" +
           statusTable(meaning.reason) + replyCodes(meaning.reason) +
           phrases(meaning.reason, PhraseKind::clear, "Phrases that say so, whatever the code is") +
           phrases(meaning.reason, PhraseKind::fair,
                   "Phrases that say so unless a definite code says more") +
           phrases(meaning.reason, PhraseKind::hint, "Phrases that hint at it") +
           topics(meaning.reason);
}

}  // namespace

std::string reasonsPage() {
    std::string page(introduction);
    for (const AdviceMeaning& row : allAdvices()) {
        page += "| " + std::string(row.name) + " | " + cell(row.meaning) + " |\n";
    }
    page += aboutAdvice;
    for (const ReasonMeaning& meaning : allReasons()) {
        if (meaning.reason != Reason::none) page += sectionOf(meaning);
    }
    return page;
}

}  // namespace bouncecheck
