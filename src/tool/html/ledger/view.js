// What the table, the search and the charts show of a ledger.

/** What colours stand for. */
const kinds = ["suppress", "unsubscribe", "retry", "deny"];
const kindOf = (row) => rows.cause[row];

const columns = [
    { name: "cause", title: "Cause", key: kindOf, text: kindOf },
    {
        name: "address",
        title: "Address",
        key: (row) => rows.address[row].toLowerCase(),
        text: (row) => rows.address[row],
    },
    {
        name: "reason",
        title: "Reason",
        key: (row) => rows.reason[row],
        text: (row) => rows.reason[row],
    },
    {
        name: "evidence",
        title: "Evidence",
        key: (row) => rows.evidence[row].toLowerCase(),
        text: (row) => rows.evidence[row],
    },
    {
        name: "count",
        title: "Reports",
        key: (row) => rows.count[row],
        text: (row) => number(rows.count[row]),
    },
    {
        name: "since",
        title: "Since (UTC)",
        key: (row) => rows.since[row] ?? "",
        text: (row) => sinceTexts[row].slice(0, 10),
    },
    {
        name: "last",
        title: "Last seen",
        key: (row) => rows.last[row] ?? "",
        text: (row) => lastTexts[row].slice(0, 10),
    },
];

/** A date is asked for by its text, or by its week. */
const isTimeWithin = (text, value) =>
    isDateWithin(text, value) || (value.includes("-w") && weekOf(text).toLowerCase() === value);

const searchNames = {
    cause: { of: (row) => [kindOf(row)], holds: beginsWith, isChoice: true },
    reason: { of: (row) => [orNone(rows.reason[row])], holds: beginsWith, isChoice: true },
    domain: { of: (row) => [orNone(domains[row])], holds: isEqual, isChoice: true },
    address: { of: (row) => [rows.address[row]], holds: contains },
    evidence: { of: (row) => [rows.evidence[row]], holds: contains },
    since: { of: (row) => [sinceTexts[row]], holds: isTimeWithin, isChoice: true },
    first: { of: (row) => [firstTexts[row]], holds: isTimeWithin, isChoice: true },
    last: { of: (row) => [lastTexts[row]], holds: isTimeWithin, isChoice: true },
};

/** What words are looked for in. */
const wordsOf = (row) =>
    [rows.address, rows.cause, rows.reason, rows.evidence, sinceTexts, firstTexts, lastTexts]
        .map((column) => column[row])
        .join("\n");

const addressOf = (row) => rows.address[row];

const charts = [
    {
        name: "cause",
        valueOf: kindOf,
        meaningOf: causeMeaning,
        markOf: (value) => `dot ${value}`,
        empty: "Nothing is suppressed.",
    },
    {
        name: "reason",
        valueOf: (row) => rows.reason[row],
        meaningOf: (value) => help.reasons[value]?.[0],
        empty: "No reason is known.",
    },
    { name: "domain", valueOf: (row) => domains[row], empty: "No address is known." },
];

function totals() {
    const reports = development.count.reduce((sum, count) => sum + count, 0);
    return [
        `${counted(rowCount, "suppressed address", "suppressed addresses")} shown`,
        `${counted(help.addresses, "address", "addresses")} in the ledger`,
        `${counted(help.messages, "message")} with ${counted(reports, "report")}`,
        `as of ${dateText(help.now)} UTC`,
    ];
}

const secondsOfDay = 86400;

/** The days that charts show. The first few reports are left out where they are far before the
    rest, since clocks that are years late would press that together; nothing is in the future. */
const shownDays = (() => {
    const { reportDay, count, changeDay } = development;
    const strays = count.reduce((sum, many) => sum + many, 0) / 200;
    let passed = 0;
    const first = reportDay.find((_, at) => (passed += count[at]) > strays) ?? changeDay[0];
    const last = Math.max(reportDay.at(-1) ?? first, changeDay.at(-1) ?? first);
    return { first: first * secondsOfDay, last: last * secondsOfDay };
})();

/** Draws what was counted from day to day: entries of a day, a kind and how many. */
function drawDays(place, entries, chart) {
    if (entries.length === 0) {
        place.replaceChildren(make("p", {}, "There are none."));
        return;
    }
    drawSpans(place, {
        ...chart,
        ...shownDays,
        unitNames: ["day", "week", "month", "year"],
        counts: (count) => {
            for (const [day, kind, many] of entries) {
                count(dateText(day * secondsOfDay), kind, many);
            }
        },
    });
}

function drawChanges() {
    const { changeDay, begun, ended } = development;
    const entries = changeDay.flatMap((day, i) =>
        [
            [day, "suppressed", begun[i]],
            [day, "freed", ended[i]],
        ].filter(([, , count]) => count > 0),
    );
    drawDays(find("changes"), entries, {
        title: "Suppressed and freed",
        drawnKinds: ["suppressed", "freed"],
        signs: { suppressed: 1, freed: -1 },
        searchName: "since",
        notes: (unit) => [`The whole ledger by ${unit}. A press finds those suppressed since then.`],
    });
}

/** What reports are counted by. */
let countedBy = "advice";

function drawReports() {
    const { texts, reportDay, count } = development;
    const kindsOfReports = development[countedBy].map((text) => orNone(texts[text]));
    const totalOf = new Map();
    kindsOfReports.forEach((kind, i) => totalOf.set(kind, (totalOf.get(kind) ?? 0) + count[i]));
    drawDays(
        find("reports"),
        reportDay.map((day, i) => [day, kindsOfReports[i], count[i]]),
        {
            title: "Reports",
            drawnKinds: [...totalOf.keys()].sort((a, b) => totalOf.get(b) - totalOf.get(a)),
            searchName: "last",
            notes: (unit) => [`The whole ledger by ${unit}. A press finds those last seen then.`],
        },
    );
    for (const button of find("by").children) {
        button.setAttribute("aria-pressed", String(button.dataset.by === countedBy));
    }
}

/** They show the whole ledger, whatever is searched. */
function drawTimes() {
    drawChanges();
    drawReports();
}

find("by").addEventListener("click", (event) => {
    const button = event.target.closest("button");
    if (!button) return;
    countedBy = button.dataset.by;
    drawReports();
});

function begun() {}
