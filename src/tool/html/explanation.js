// What a message unfolds to.

function explain(row) {
    const detail = detailOf(row);
    const text = (at) => detail.texts[at];
    const type = types.get(rows.type[row]);
    const label = rows.label[row];
    const rule = help.rules[label];
    const facts = [
        ["Verdict", `${type.name} (${type.type}): ${rule?.meaning ?? type.meaning}`],
        ["What to do", rule?.advice ?? type.advice],
        ["Rule", ruleText(type, label)],
        ["Phrase", detail.phrase && text(detail.phrase)],
        ["Address", rows.address[row]],
        ["Subject", rows.subject[row]],
        ["From", rows.from[row]],
        ["Source", rows.place[row]],
        ["Reported by", detail.reportedBy && text(detail.reportedBy)],
        ["Failed", detail.failed && text(detail.failed)],
        ["Recipients", detail.recipients && recipientList(detail)],
    ];
    const pairs = (list) => factList(list.map((pair) => pair.map(text)));
    const left = [factList(facts)];
    if (detail.report) left.push(titled("Report", pairs(detail.report)));
    if (detail.returned) left.push(titled("Returned message", pairs(detail.returned)));
    const right = [titled("Steps", stepTree(detail))];
    if (detail.excerpt.length > 0) {
        right.unshift(titled("Text", excerptOf(detail, rows.address[row])));
    }
    return [make("div", {}, ...left), make("div", {}, ...right)];
}

function ruleText(type, label) {
    if (help.rules[label]) return `${label}: ${help.rules[label].looksFor}`;
    if (label) return label;
    return type.name === "none" ? "none held" : "a row of the rule table, which has no label";
}

function titled(title, content) {
    return make("div", {}, make("h3", {}, title), content);
}

function factList(facts) {
    const list = make("dl");
    for (const [name, value] of facts) {
        if (value) list.append(make("dt", {}, name), make("dd", {}, value));
    }
    return list;
}

function recipientList({ recipients, moreRecipients, texts }) {
    const list = make("ul");
    for (const recipient of recipients) {
        const [original, final, action, status, diagnostic, remote] = recipient.map(
            (at) => texts[at],
        );
        const addresses = [...new Set([original, final])].filter(Boolean).join(" → ");
        const more = [action, status, diagnostic, remote && `from ${remote}`].filter(Boolean);
        list.append(make("li", {}, addresses || "–", make("small", {}, more.join(", "))));
    }
    if (moreRecipients)
        list.append(make("li", { class: "empty" }, `and ${number(moreRecipients)} more`));
    return list;
}

/** Lines are lists of pieces, those at odd places marked; a gap has none. */
function excerptOf({ excerpt, texts }, address) {
    const lines = make("pre");
    for (const pieces of excerpt) {
        if (pieces.length === 0) lines.append(make("span", { class: "gap" }, "…"));
        pieces.forEach((at, i) => {
            const piece = texts[at];
            const isAddress = piece.toLowerCase() === address.toLowerCase();
            const mark = isAddress ? "address" : "phrase";
            lines.append(i % 2 === 1 ? make("mark", { class: mark }, piece) : piece);
        });
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
