// What a row unfolds to: the recipient, then the message.

function explain(row) {
    const detail = detailOf(row);
    const text = (at) => detail.texts[at];
    const beside = rowsBeside(row);
    const place = beside.indexOf(row);
    const left = [];
    if (detail.recipients.length > 0) {
        left.push(factList(recipientFacts(row, detail.recipients[place].map(text))));
    }
    const others = beside.filter((other) => other !== row);
    if (others.length > 0) left.push(titled("Other recipients", recipientList(others)));
    const message = factList(messageFacts(row, detail));
    left.push(left.length > 0 ? titled("Message", message) : message);
    const pairs = (list) => factList(list.map((pair) => pair.map(text)));
    if (detail.report) left.push(titled("Report", pairs(detail.report)));
    if (detail.returned) left.push(titled("Returned message", pairs(detail.returned)));
    const right = [titled("Steps", stepTree(detail))];
    if (detail.excerpt.length > 0) right.unshift(titled("Text", excerptOf(detail, place)));
    return [make("div", {}, ...left), make("div", {}, ...right)];
}

function messageFacts(row, detail) {
    const text = (at) => detail.texts[at];
    const type = types.get(rows.type[row]);
    const label = rows.label[row];
    const rule = help.rules[label];
    const isSameAddress = rows.address[row].toLowerCase() === rows.recipient[row].toLowerCase();
    const isForMessage = detail.recipients.length === 0;
    return [
        ["Verdict", `${type.name} (${type.type}): ${rule?.meaning ?? type.meaning}`],
        ["What to do", isForMessage && (rule?.advice ?? type.advice)],
        ["Rule", ruleText(type, label)],
        ["Phrase", detail.phrase && text(detail.phrase)],
        ["Address", (isForMessage || !isSameAddress) && rows.address[row]],
        ["Subject", rows.subject[row]],
        ["From", rows.from[row]],
        ["Source", rows.place[row]],
        ["Reported by", detail.reportedBy && text(detail.reportedBy)],
    ];
}

const sourceMeanings = {
    verp: "the address that the message came back to",
    report: "the report",
    header: "a field of the header",
    text: "the text",
    returned: "the message that came back",
};
const basisMeanings = { phrase: "the words", status: "the status code", "reply-code": "the code" };

function recipientFacts(row, texts) {
    const [tag, replyCode, remote, lastAttempt, retryUntil, source, basis, tableRow] = texts;
    const { recipient, final, outcome, reason, advice, status, diagnostic, quote } =
        Object.fromEntries(recipientColumns.map((name) => [name, rows[name][row]]));
    const meaning = help.reasons[reason];
    const withUsual = [`${reason}: ${meaning?.meaning}`];
    if (meaning?.action) withUsual.push(make("small", {}, `Usually: ${meaning.action}`));
    return [
        ["Recipient", recipient || "–"],
        ["Sent on to", final],
        ["Tag", tag !== recipient && tag],
        ["Outcome", outcome],
        ["Reason", reason && withUsual],
        ["What to do", advice && [make("strong", {}, advice), `: ${help.advices[advice]}`]],
        ["Status code", status],
        ["Reply code", replyCode],
        ["Reply", diagnostic && withQuote(diagnostic, quote)],
        ["Said by", remote],
        ["Last attempt", lastAttempt],
        ["Retried until", retryUntil],
        ["Named in", sourceMeanings[source]],
        ["Reason from", basis && [`${basisMeanings[basis]} `, make("q", {}, quote || tableRow)]],
    ];
}

/** The words that gave the reason are marked. */
function withQuote(text, quote) {
    const at = quote ? text.indexOf(quote) : -1;
    if (at < 0) return text;
    const mark = make("mark", { class: "quote", title: markTitles.quote }, quote);
    return [text.slice(0, at), mark, text.slice(at + quote.length)];
}

function ruleText(type, label) {
    if (help.rules[label]) return `${label}: ${help.rules[label].looksFor}`;
    if (label) return label;
    return type.name === "none" ? "none held" : "a row of the table of last resort, which has no label";
}

function recipientList(others) {
    const most = 20;
    const items = others.slice(0, most).map((row) => {
        const more = [rows.outcome[row], rows.reason[row], rows.advice[row]].filter(Boolean);
        const address = rows.recipient[row] || "–";
        return make("li", {}, address, make("small", {}, more.join(", ")));
    });
    const left = others.length - items.length;
    if (left > 0) items.push(make("li", { class: "empty" }, `and ${number(left)} more`));
    return make("ul", {}, ...items);
}

const markTitles = {
    address: "the recipient",
    quote: "what gave the reason",
    phrase: "what decided the verdict",
};

/** What a piece is marked as for a row, by the bits of its marks: the phrase and the address of
    the verdict, then two for each recipient of the message. */
function kindsOf(bits, place) {
    const mostMarked = 15;
    const ofRow = place < mostMarked ? (bits >>> (2 + 2 * place)) & 3 : 0;
    const isOthers = (bits & 0x55555554) !== 0;
    const isAddress = ofRow & 1 || (bits & 2 && !isOthers);
    const holds = { address: isAddress, quote: ofRow & 2, phrase: bits & 1 };
    return Object.keys(holds).filter((kind) => holds[kind]);
}

/** Lines are lists of pieces: a text, or a text and the bits of its marks. A gap has none. */
function excerptOf({ excerpt, texts }, place) {
    const lines = make("pre");
    for (const pieces of excerpt) {
        if (pieces.length === 0) lines.append(make("span", { class: "gap" }, "…"));
        for (const piece of pieces) {
            const [at, bits] = [piece, 0].flat();
            const kinds = kindsOf(bits, place);
            const title = kinds.map((kind) => markTitles[kind]).join(", ");
            const attributes = { class: kinds.join(" "), title };
            lines.append(kinds.length > 0 ? make("mark", attributes, texts[at]) : texts[at]);
        }
        lines.append("\n");
    }
    return lines;
}

/** Shapes are the deciding step, then steps as four times a text plus a kind. */
function stepTree({ shapes, shape, values, texts, moreSteps }) {
    const kinds = { enter: 0, leave: 1, data: 3 };
    const [deciding, ...steps] = shapes[shape];
    const root = make("ul", { class: "steps" });
    let list = root;
    let value = 0;
    steps.forEach((step, i) => {
        const kind = step % 4;
        if (kind === kinds.leave) {
            list = list.parentElement?.closest(".steps") ?? root;
            return;
        }
        const item = make("li", {}, texts[(step - kind) / 4]);
        list.append(item);
        if (kind === kinds.data) {
            const text = texts[values[value]].replaceAll("\r", "");
            item.append(": ", make("span", { class: "value" }, text || "–"));
            value += 1;
        }
        if (i === deciding) decide(item);
        const isEmpty = steps[i + 1] === undefined || steps[i + 1] % 4 === kinds.leave;
        if (kind === kinds.enter) {
            const inner = make("ul", { class: "steps" });
            if (!isEmpty) {
                const summary = make("summary", {}, ...item.childNodes);
                item.append(make("details", {}, summary, inner));
            } else {
                item.append(inner);
            }
            list = inner;
        }
    });
    if (moreSteps) root.append(make("li", { class: "empty" }, `and ${number(moreSteps)} more`));
    return root;
}

function decide(item) {
    item.classList.add("decides");
    const content = [...item.childNodes];
    item.append(make("mark", {}, ...content), make("b", {}, "decides"));
    for (let at = item.parentElement; at; at = at.parentElement) {
        if (at.localName === "details") at.open = true;
    }
}
