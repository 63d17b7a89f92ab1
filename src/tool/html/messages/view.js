// What the table, the search and the charts show of messages and their recipients.

/** What colours stand for. */
const kinds = help.types.map(({ name }) => name);
const kindOf = (row) => typeName(rows.type[row]);
const bounceTypes = ["hard", "soft", "no-recipient", "blocked"];

const columns = [
    { name: "verdict", title: "Verdict", key: kindOf, text: kindOf },
    {
        name: "recipient",
        title: "Recipient",
        key: (row) => rows.recipient[row].toLowerCase(),
        text: (row) => rows.recipient[row],
    },
    ...["reason", "advice", "status"].map((name) => ({
        name,
        title: { reason: "Reason", advice: "What to do", status: "Status" }[name],
        key: (row) => rows[name][row],
        text: (row) => rows[name][row],
    })),
    {
        name: "reply",
        title: "Reply or subject",
        key: (row) => replyOf(row).toLowerCase(),
        text: replyOf,
    },
    {
        name: "date",
        title: "Date (UTC)",
        key: (row) => rows.date[row] ?? "",
        text: (row) => dateTexts[row],
    },
];

/** What can be asked for by name: texts of a row, and when they answer to a value. Of a choice,
    several values with commas between are asked for at once; what it has none of is "none". */
const searchNames = {
    reason: { of: (row) => [orNone(rows.reason[row])], holds: beginsWith, isChoice: true },
    verdict: { of: (row) => [kindOf(row)], holds: beginsWith, isChoice: true },
    status: { of: (row) => [orNone(rows.status[row])], holds: isCodeWithin, isChoice: true },
    address: { of: (row) => [rows.recipient[row], rows.final[row]], holds: contains },
    date: { of: (row) => [dateTexts[row]], holds: isDateWithin, isChoice: true },
    domain: { of: (row) => [orNone(domains[row])], holds: isEqual, isChoice: true },
    advice: { of: (row) => [orNone(rows.advice[row])], holds: beginsWith, isChoice: true },
    outcome: { of: (row) => [orNone(rows.outcome[row])], holds: beginsWith, isChoice: true },
    reply: { of: (row) => [rows.diagnostic[row], rows.quote[row]], holds: contains },
    subject: { of: (row) => [rows.subject[row]], holds: contains },
    from: { of: (row) => [rows.from[row]], holds: contains },
    rule: { of: (row) => [rows.label[row]], holds: isEqual },
    source: { of: (row) => [rows.place[row]], holds: contains },
};

/** What words are looked for in. */
function wordsOf(row) {
    const texts = [...recipientColumns, ...messageColumns].map((name) => rows[name][row]);
    return [kindOf(row), dateTexts[row], ...texts].join("\n");
}

const addressOf = (row) => rows.recipient[row];

/** The charts by the name that their bars search for; `valueOf` is what a row counts as. */
const charts = [
    {
        name: "reason",
        valueOf: (row) => rows.reason[row],
        meaningOf: (value) => help.reasons[value]?.meaning,
        empty: "No reason is known.",
    },
    {
        name: "verdict",
        valueOf: kindOf,
        meaningOf: (value) => help.types.find(({ name }) => name === value).meaning,
        markOf: (value) => `dot ${value}`,
        empty: "There are none.",
    },
    {
        name: "advice",
        valueOf: (row) => rows.advice[row],
        meaningOf: (value) => help.advices[value],
        empty: "No recipient is known.",
    },
    { name: "status", valueOf: (row) => rows.status[row], empty: "No status code is known." },
    { name: "domain", valueOf: (row) => domains[row], empty: "No address is known." },
];

function totals() {
    const parts = [counted(messageCount, "message")];
    if (messageCount > 0) {
        const isBounce = new Set(bounceTypes);
        const bounces = firstRows.filter((row) => isBounce.has(kindOf(row))).length;
        parts.push(`${counted(bounces, "bounce")} (${percent(bounces, messageCount)})`);
        const addresses = new Set(rows.recipient.map((address) => address.toLowerCase()));
        addresses.delete("");
        parts.push(counted(addresses.size, "address", "addresses"));
    }
    return parts;
}

function drawTimes() {
    const chosen = valuesAsked(searched(), "verdict");
    const chosenKinds = kinds.filter((kind) => chosen.has(kind));
    const drawnKinds = chosenKinds.length > 0 ? chosenKinds : bounceTypes;
    const isDrawn = new Set(drawnKinds);
    const among = shown.filter((row) => isDrawn.has(kindOf(row)));
    const dated = among.filter((row) => rows.date[row] !== null);
    const title =
        chosenKinds.length > 0 ? `Over time: ${drawnKinds.join(", ")}` : "Bounces over time";
    find("time-title").textContent = title;
    if (dated.length === 0) {
        find("time").replaceChildren(
            make("p", {}, among.length > 0 ? "None has a date." : "There are none."),
        );
        return;
    }
    // Clocks that are years off would press all the rest together.
    const dates = Float64Array.from(dated, (row) => rows.date[row]).sort();
    const strays = Math.floor(dates.length / 200);
    drawSpans(find("time"), {
        title,
        drawnKinds,
        first: dates[strays],
        last: dates[dates.length - 1 - strays],
        unitNames: ["hour", "day", "month", "year"],
        counts: (count) => dated.forEach((row) => count(dateTexts[row], kindOf(row), 1)),
        searchName: "date",
        notes: (unit) => {
            const texts = [`By ${unit}, of the Date field.`];
            const undated = among.length - dated.length;
            return undated > 0 ? [...texts, `${number(undated)} undated.`] : texts;
        },
    });
}

/** Of a single message there is nothing to count, and all to explain. */
function begun() {
    if (messageCount !== 1) return;
    document.querySelector(".charts").hidden = true;
    toggle(0);
}
