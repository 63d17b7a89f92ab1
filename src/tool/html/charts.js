// The charts of the messages that are shown; they serve as filters too.

/** How many of `among` have each type, as a map in the order of all types. */
function countTypes(among) {
    const counts = new Map(help.types.map(({ type }) => [type, 0]));
    for (const row of among) counts.set(rows.type[row], counts.get(rows.type[row]) + 1);
    return counts;
}

/** A row of a bar chart: a button with a name, a stacked bar and a count. */
function barRow({ name, mark = "", counts, most, title, isPressed, press }) {
    const total = [...counts.values()].reduce((sum, count) => sum + count, 0);
    const picture = svg("svg", { viewBox: "0 0 100 10", preserveAspectRatio: "none", role: "img" });
    picture.append(svg("title", {}, title(total)));
    let x = 0;
    for (const [type, count] of counts) {
        const width = (100 * count) / most;
        if (count > 0) {
            picture.append(svg("rect", { x, y: 0, width, height: 10, class: typeName(type) }));
        }
        x += width;
    }
    const button = make(
        "button",
        { type: "button", class: "bar", "aria-pressed": String(isPressed) },
        make("span", { class: `text ${mark}` }, name),
        picture,
        make("span", { class: "count" }, number(total)),
    );
    button.dataset.key = name;
    button.addEventListener("click", press);
    return make("li", {}, button);
}

/** Replaces the rows of a chart; the focus stays on the one of the same name. */
function replaceRows(list, items) {
    const key = list.contains(document.activeElement) && document.activeElement.dataset.key;
    list.replaceChildren(...items);
    const again = [...list.querySelectorAll("button")].find((one) => one.dataset.key === key);
    again?.focus();
}

const countsOfAll = [...countTypes(rows.type.keys())]
    .filter(([, count]) => count > 0)
    .sort((a, b) => b[1] - a[1]);

function drawVerdicts(found) {
    const counts = countTypes(found);
    const items = countsOfAll.map(([type]) => {
        const isPressed = chosenTypes.has(type);
        return barRow({
            name: typeName(type),
            mark: `dot ${typeName(type)}`,
            counts: new Map([[type, counts.get(type)]]),
            most: countsOfAll[0][1],
            title: (total) => `${percent(total, rowCount)} of all: ${types.get(type).meaning}`,
            isPressed,
            press: () => {
                if (isPressed) chosenTypes.delete(type);
                else chosenTypes.add(type);
                update();
            },
        });
    });
    replaceRows(find("verdicts"), items);
}

function drawDomains() {
    const topRows = 10;
    const rowsOf = new Map();
    for (const row of shown) {
        const domain = domains[row];
        if (!domain) continue;
        if (!rowsOf.has(domain)) rowsOf.set(domain, []);
        rowsOf.get(domain).push(row);
    }
    const top = [...rowsOf].sort((a, b) => b[1].length - a[1].length).slice(0, topRows);
    const items = top.map(([domain, of]) =>
        barRow({
            name: domain,
            counts: countTypes(of),
            most: top[0][1].length,
            title: () => summaryOf(countTypes(of)),
            isPressed: find("search").value === `domain:${domain}`,
            press: () => toggleSearch(`domain:${domain}`),
        }),
    );
    if (items.length === 0) items.push(make("li", { class: "empty" }, "No address is known."));
    replaceRows(find("domains"), items);
}

function summaryOf(counts) {
    const parts = [...counts].filter(([, count]) => count > 0);
    return parts.map(([type, count]) => `${typeName(type)} ${number(count)}`).join(", ");
}

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
    const drawnTypes = chosenTypes.size > 0 ? [...chosenTypes] : bounceTypes;
    const isDrawn = new Set(drawnTypes);
    const among = shown.filter((row) => isDrawn.has(rows.type[row]));
    const dated = among.filter((row) => rows.date[row] !== null);
    const names = drawnTypes.map(typeName).join(", ");
    const title = chosenTypes.size > 0 ? `Over time: ${names}` : "Bounces over time";
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
    find("time").replaceChildren(
        timePicture(spans, unit, title),
        make("div", { class: "legend" }, ...legend, make("span", {}, notes.join(" "))),
    );
}

function timePicture(spans, unit, title) {
    const width = Math.max(find("time").clientWidth, 200);
    const height = 220;
    const area = { left: 44, top: 8, bottom: height - 26 };
    const totals = [...spans.values()].map((counts) =>
        [...counts.values()].reduce((a, b) => a + b),
    );
    const most = Math.max(...totals);
    const step = (width - area.left) / spans.size;
    const yOf = (count) => area.bottom - ((area.bottom - area.top) * count) / most;

    const picture = svg("svg", { viewBox: `0 0 ${width} ${height}`, role: "img" });
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
        const span = svg(
            "g",
            {},
            svg("title", {}, `${name}: ${summaryOf(spans.get(name)) || "none"}`),
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
        span.addEventListener("click", () => toggleSearch(`date:${name.replace(" ", "T")}`));
        if (i % labelEvery === 0) picture.append(svg("text", { x, y: height - 8 }, name));
        picture.append(span);
    });
    return picture;
}
