// Charts over time.

/** Spans of time: the name of the one that a date is in, and when the next begins. */
const units = [
    { name: "hour", letters: 13, next: (d) => Date.UTC(d.y, d.m, d.d, d.h + 1), ms: 36e5 },
    { name: "day", letters: 10, next: (d) => Date.UTC(d.y, d.m, d.d + 1), ms: 864e5 },
    { name: "week", letters: 8, next: (d) => Date.UTC(d.y, d.m, d.d + 7), ms: 6048e5 },
    { name: "month", letters: 7, next: (d) => Date.UTC(d.y, d.m + 1), ms: 2629746e3 },
    { name: "year", letters: 4, next: (d) => Date.UTC(d.y + 1, 0), ms: 31556952e3 },
];

/** The weeks of days, by the texts of these. */
const weekNames = new Map();

/** "2026-W45" of a date: its week as ISO 8601 counts, which begins on Monday; "" without one. */
function weekOf(text) {
    const day = text.slice(0, 10);
    if (!weekNames.has(day)) weekNames.set(day, day && weekOfDay(day));
    return weekNames.get(day);
}

function weekOfDay(day) {
    const date = new Date(`${day}T00:00Z`);
    // A week is in the year of its Thursday.
    date.setUTCDate(date.getUTCDate() + 3 - ((date.getUTCDay() + 6) % 7));
    const year = date.getUTCFullYear();
    const week = Math.floor((date - Date.UTC(year, 0)) / 6048e5) + 1;
    return `${year}-W${String(week).padStart(2, "0")}`;
}

const spanOf = (text, unit) =>
    unit.name === "week" ? weekOf(text) : text.slice(0, unit.letters);

/** Nothing of any kind. */
const zeros = (kinds) => new Map(kinds.map((kind) => [kind, 0]));

/** The spans of one of some units from the first second to the last. */
function spansBetween(first, last, names, drawnKinds) {
    const mostSpans = 120;
    const among = units.filter(({ name }) => names.includes(name));
    const fits = ({ ms }) => (last - first) * 1000 <= mostSpans * ms;
    const unit = among.find(fits) ?? among.at(-1);
    const spans = new Map();
    for (let at = first * 1000; at <= last * 1000 && spans.size < 10 * mostSpans;) {
        spans.set(spanOf(dateText(at / 1000), unit), zeros(drawnKinds));
        const date = new Date(at);
        at = unit.next({
            y: date.getUTCFullYear(),
            m: date.getUTCMonth(),
            d: date.getUTCDate(),
            h: date.getUTCHours(),
        });
    }
    spans.set(spanOf(dateText(last), unit), zeros(drawnKinds));
    return { unit, spans };
}

/** Draws a chart into `place`. `drawnKinds` are what is counted and drawn, from below, between the
    seconds `first` and `last`; `counts` calls its argument with the text of a date, a kind and
    how many there are. A press on a span sets what is searched under `searchName`. Where `signs`
    says which kinds add to a number and which take from it, each span tells how many are left. */
function drawSpans(place, chart) {
    const { drawnKinds, first, last } = chart;
    const { unit, spans } = spansBetween(first, last, chart.unitNames, drawnKinds);
    const drawn = new Set();
    let outside = 0;
    let left = 0;
    chart.counts((text, kind, count) => {
        const span = spans.get(spanOf(text, unit));
        if (span) span.set(kind, span.get(kind) + count);
        else outside += count;
        if (!span && chart.signs && text < dateText(first)) left += chart.signs[kind] * count;
        drawn.add(kind);
    });
    const labels = [...spans].map(([name, counts]) => {
        const text = `${name}: ${summaryOf(counts) || "none"}`;
        if (!chart.signs) return text;
        for (const [kind, count] of counts) left += chart.signs[kind] * count;
        return `${text}; ${number(left)} in all`;
    });
    const texts = chart.notes(unit.name);
    if (outside > 0) texts.push(`${number(outside)} far before or behind left out.`);
    const legend = drawnKinds
        .filter((kind) => drawn.has(kind))
        .map((kind) => make("span", { class: `dot ${kind}` }, kind));
    const focused = place.contains(document.activeElement) && document.activeElement;
    place.replaceChildren(
        timePicture(place, spans, unit, labels, chart),
        make("div", { class: "legend" }, ...legend, make("span", {}, texts.join(" "))),
    );
    // Of the narrower spans, the first.
    if (focused) place.querySelector(`[tabindex="0"]`).focus({ preventScroll: true });
}

function timePicture(place, spans, unit, labels, { title, searchName }) {
    const width = Math.max(place.clientWidth, 200);
    const height = 170;
    const area = { left: 44, top: 8, bottom: height - 26 };
    const totals = [...spans.values()].map((counts) =>
        [...counts.values()].reduce((a, b) => a + b),
    );
    const largest = Math.max(...totals);
    const most = Math.max(largest, 1);
    const step = (width - area.left) / spans.size;
    const yOf = (count) => area.bottom - ((area.bottom - area.top) * count) / most;

    const picture = svg("svg", { viewBox: `0 0 ${width} ${height}`, role: "group" });
    const names = [...spans.keys()];
    const peak = `At most ${number(largest)}, in ${names[totals.indexOf(largest)]}`;
    picture.append(
        svg("title", {}, `${title}, from ${names[0]} to ${names.at(-1)}`),
        svg("desc", {}, largest > 0 ? peak : "Nothing in this time"),
    );
    for (const count of new Set([0, Math.round(most / 2), most])) {
        const y = yOf(count);
        picture.append(
            svg("line", { x1: area.left, x2: width, y1: y, y2: y }),
            svg("text", { x: area.left - 8, y: y + 4, "text-anchor": "end" }, number(count)),
        );
    }
    const labelEvery = Math.ceil(Math.max(unit.letters * 9, 56) / step);
    const gap = step > 4 ? Math.min(step / 5, 6) : 0;
    names.forEach((name, i) => {
        const x = area.left + i * step;
        const text = labels[i];
        const tabindex = i === 0 ? 0 : -1;
        const span = svg(
            "g",
            { role: "button", tabindex, "aria-label": text },
            svg("title", {}, text),
        );
        let below = 0;
        for (const [kind, count] of spans.get(name)) {
            if (count === 0) continue;
            const y = yOf(below + count);
            const size = { width: Math.min(step - gap, 64), height: yOf(below) - y };
            span.append(svg("rect", { x: x + gap / 2, y, ...size, class: kind }));
            below += count;
        }
        const target = { x, y: area.top, width: step, height: area.bottom - area.top };
        span.append(svg("rect", { ...target, class: "target" }));
        span.addEventListener("click", () => chooseSpan(searchName, name.replace(" ", "T")));
        if (i % labelEvery === 0) picture.append(svg("text", { x, y: height - 8 }, name));
        picture.append(span);
    });
    return picture;
}

/** Searches for a span alone; for all again, when it is the one searched for. */
function chooseSpan(searchName, span) {
    const isChosen = valuesAsked(searched(), searchName).has(span.toLowerCase());
    searchFor(withValues(searched(), searchName, isChosen ? [] : [span]));
    showTable();
}

/** The arrows go from span to span, of which one is a stop for the Tab key. */
function goFromSpanToSpan(event) {
    const span = event.target.closest("g[role]");
    if (!span) return;
    const spans = [...span.parentElement.querySelectorAll("g[role]")];
    const at = spans.indexOf(span);
    const steps = { ArrowLeft: at - 1, ArrowRight: at + 1, Home: 0, End: spans.length - 1 };
    if (event.key === "Enter" || event.key === " ") {
        event.preventDefault();
        span.dispatchEvent(new Event("click"));
    } else if (spans[steps[event.key]]) {
        event.preventDefault();
        span.setAttribute("tabindex", -1);
        spans[steps[event.key]].setAttribute("tabindex", 0);
        spans[steps[event.key]].focus();
    }
}
for (const place of document.querySelectorAll(".time")) {
    place.addEventListener("keydown", goFromSpanToSpan);
}
