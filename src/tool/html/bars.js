// The bar charts of the rows that are found. A bar adds its value to the search, or removes it.

/** How many of `among` are of each kind, as a map in the order of all kinds. */
function countKinds(among) {
    const counts = new Map(kinds.map((kind) => [kind, 0]));
    for (const row of among) counts.set(kindOf(row), counts.get(kindOf(row)) + 1);
    return counts;
}

/** A row of a bar chart: a button with a name, a stacked bar and a count. */
function barRow({ name, mark = "", counts, most, title, isPressed, press }) {
    const total = [...counts.values()].reduce((sum, count) => sum + count, 0);
    const picture = svg("svg", { viewBox: "0 0 100 10", preserveAspectRatio: "none", role: "img" });
    picture.append(svg("title", {}, title(total)));
    let x = 0;
    for (const [kind, count] of counts) {
        const width = (100 * count) / most;
        if (count > 0) {
            picture.append(svg("rect", { x, y: 0, width, height: 10, class: kind }));
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
    again?.focus({ preventScroll: true });
}

const usualBars = () => (isNarrow() ? 5 : 8);
const mostBars = 60;
/** The names of charts that show more bars than usual. */
const widened = new Set();

/** What is counted, the most frequent first, those asked for in any case. */
function countValues({ name, valueOf }, chosen) {
    const rowsOf = new Map();
    for (const row of countedFor(name)) {
        const value = valueOf(row);
        if (!value) continue;
        if (!rowsOf.has(value)) rowsOf.set(value, []);
        rowsOf.get(value).push(row);
    }
    const all = [...rowsOf].sort((a, b) => b[1].length - a[1].length || (a[0] < b[0] ? -1 : 1));
    const most = widened.has(name) ? mostBars : usualBars();
    // A single one more takes the place of the button.
    const top = all.length <= most + 1 ? all : all.slice(0, most);
    const asked = all.slice(top.length).filter(([value]) => chosen.has(value.toLowerCase()));
    return { bars: [...top, ...asked], left: all.length - top.length - asked.length };
}

function drawChart(chart) {
    const { name, meaningOf, markOf, empty } = chart;
    const chosen = valuesAsked(searched(), name);
    const { bars, left } = countValues(chart, chosen);
    const items = bars.map(([value, of]) => {
        const isPressed = chosen.has(value.toLowerCase());
        return barRow({
            name: value,
            mark: markOf?.(value),
            counts: countKinds(of),
            most: bars[0][1].length,
            title: (total) =>
                [`${value}: ${percent(total, rowCount)} of all`, meaningOf?.(value)]
                    .concat(markOf ? [] : [summaryOf(countKinds(of))])
                    .filter(Boolean)
                    .join("\n"),
            isPressed,
            press: () => {
                if (isPressed) chosen.delete(value.toLowerCase());
                else chosen.add(value.toLowerCase());
                searchFor(withValues(searched(), name, [...chosen]));
                showTable();
            },
        });
    });
    if (items.length === 0) items.push(make("li", { class: "empty" }, empty));
    if (left > 0 && !widened.has(name)) {
        const button = make("button", { type: "button", class: "more" }, `${number(left)} more`);
        button.addEventListener("click", () => {
            widened.add(name);
            drawChart(chart);
            find(`chart-${name}`).querySelectorAll("button")[bars.length].focus();
        });
        items.push(make("li", {}, button));
    } else if (left > 0) {
        items.push(make("li", { class: "empty" }, `and ${number(left)} more`));
    }
    replaceRows(find(`chart-${name}`), items);
}

function drawBars() {
    for (const chart of charts) drawChart(chart);
}

function summaryOf(counts) {
    const parts = [...counts].filter(([, count]) => count > 0);
    return parts.map(([kind, count]) => `${kind} ${number(count)}`).join(", ");
}
