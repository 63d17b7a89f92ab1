// The chart over time.

const bounceTypes = help.types
    .filter(({ name }) => ["hard", "soft", "no-recipient", "blocked"].includes(name))
    .map(({ type }) => type);

/** Spans of time: how much of `dateText` names one, and when the next begins. */
const units = [
    { name: "hour", letters: 13, next: (d) => Date.UTC(d.y, d.m, d.d, d.h + 1), ms: 36e5 },
    { name: "day", letters: 10, next: (d) => Date.UTC(d.y, d.m, d.d + 1), ms: 864e5 },
    { name: "month", letters: 7, next: (d) => Date.UTC(d.y, d.m + 1), ms: 2629746e3 },
    { name: "year", letters: 4, next: (d) => Date.UTC(d.y + 1, 0), ms: 31556952e3 },
];

/** The spans from the first second to the last. */
function spansBetween(first, last) {
    const mostSpans = 120;
    const fits = ({ ms }) => (last - first) * 1000 <= mostSpans * ms;
    const unit = units.find(fits) ?? units.at(-1);
    const spans = new Map();
    for (let at = first * 1000; at <= last * 1000 && spans.size < 10 * mostSpans;) {
        spans.set(dateText(at / 1000).slice(0, unit.letters), countTypes([]));
        const date = new Date(at);
        at = unit.next({
            y: date.getUTCFullYear(),
            m: date.getUTCMonth(),
            d: date.getUTCDate(),
            h: date.getUTCHours(),
        });
    }
    spans.set(dateText(last).slice(0, unit.letters), countTypes([]));
    return { unit, spans };
}

function drawTime() {
    const chosen = valuesAsked(searched(), "verdict");
    const chosenTypes = help.types.filter(({ name }) => chosen.has(name)).map(({ type }) => type);
    const drawnTypes = chosenTypes.length > 0 ? chosenTypes : bounceTypes;
    const isDrawn = new Set(drawnTypes);
    const among = shown.filter((row) => isDrawn.has(rows.type[row]));
    const dated = among.filter((row) => rows.date[row] !== null);
    const names = drawnTypes.map(typeName).join(", ");
    const title = chosenTypes.length > 0 ? `Over time: ${names}` : "Bounces over time";
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
    const { unit, spans } = spansBetween(dates[strays], dates[dates.length - 1 - strays]);
    let outside = 0;
    for (const row of dated) {
        const counts = spans.get(dateTexts[row].slice(0, unit.letters));
        if (!counts) outside += 1;
        else counts.set(rows.type[row], counts.get(rows.type[row]) + 1);
    }
    const notes = [`By ${unit.name}, of the Date field.`];
    if (dated.length < among.length) notes.push(`${number(among.length - dated.length)} undated.`);
    if (outside > 0) notes.push(`${number(outside)} far before or behind left out.`);
    const legend = help.types
        .filter(({ type }) => isDrawn.has(type) && dated.some((row) => rows.type[row] === type))
        .map(({ name }) => make("span", { class: `dot ${name}` }, name));
    const focused = find("time").contains(document.activeElement) && document.activeElement;
    find("time").replaceChildren(
        timePicture(spans, unit, title),
        make("div", { class: "legend" }, ...legend, make("span", {}, notes.join(" "))),
    );
    // Of the narrower spans, the first.
    if (focused) find("time").querySelector(`[tabindex="0"]`).focus({ preventScroll: true });
}

function timePicture(spans, unit, title) {
    const width = Math.max(find("time").clientWidth, 200);
    const height = 170;
    const area = { left: 44, top: 8, bottom: height - 26 };
    const totals = [...spans.values()].map((counts) =>
        [...counts.values()].reduce((a, b) => a + b),
    );
    const most = Math.max(...totals);
    const step = (width - area.left) / spans.size;
    const yOf = (count) => area.bottom - ((area.bottom - area.top) * count) / most;

    const picture = svg("svg", { viewBox: `0 0 ${width} ${height}`, role: "group" });
    const names = [...spans.keys()];
    const peak = names[totals.indexOf(most)];
    picture.append(
        svg("title", {}, `${title}, from ${names[0]} to ${names.at(-1)}`),
        svg("desc", {}, `At most ${number(most)}, in ${peak}`),
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
        const text = `${name}: ${summaryOf(spans.get(name)) || "none"}`;
        const tabindex = i === 0 ? 0 : -1;
        const span = svg(
            "g",
            { role: "button", tabindex, "aria-label": text },
            svg("title", {}, text),
        );
        let below = 0;
        for (const [type, count] of spans.get(name)) {
            if (count === 0) continue;
            const y = yOf(below + count);
            const size = { width: Math.min(step - gap, 64), height: yOf(below) - y };
            span.append(svg("rect", { x: x + gap / 2, y, ...size, class: typeName(type) }));
            below += count;
        }
        const target = { x, y: area.top, width: step, height: area.bottom - area.top };
        span.append(svg("rect", { ...target, class: "target" }));
        span.addEventListener("click", () => chooseSpan(name.replace(" ", "T")));
        if (i % labelEvery === 0) picture.append(svg("text", { x, y: height - 8 }, name));
        picture.append(span);
    });
    return picture;
}

/** Searches for a span alone; for all again, when it is the one searched for. */
function chooseSpan(span) {
    const isChosen = valuesAsked(searched(), "date").has(span.toLowerCase());
    searchFor(withValues(searched(), "date", isChosen ? [] : [span]));
    showTable();
}

/** The arrows go from span to span, of which one is a stop for the Tab key. */
find("time").addEventListener("keydown", (event) => {
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
});
