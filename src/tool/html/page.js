// Draws the page from the data blocks before it. Whatever comes from mail is put into the
// document as text, never as markup, and never into an attribute that acts.

const find = (id) => document.getElementById(id);
const dataBlocks = (name) => [...document.querySelectorAll(`script.${name}`)];
const parsed = (block) => JSON.parse(block.textContent);
const number = (value) => value.toLocaleString("en");
const percent = (part, whole) => `${((100 * part) / whole).toFixed(1)} %`;
const countOf = (count, one) => `${number(count)} ${one}${count === 1 ? "" : "s"}`;

/** Sets attributes and appends children; a string becomes a text node. */
function filled(element, attributes, children) {
    for (const [name, value] of Object.entries(attributes)) {
        if (value !== undefined) element.setAttribute(name, value);
    }
    element.append(...children);
    return element;
}

function make(name, attributes = {}, ...children) {
    return filled(document.createElement(name), attributes, children);
}

function svg(name, attributes = {}, ...children) {
    const space = "http://www.w3.org/2000/svg";
    return filled(document.createElementNS(space, name), attributes, children);
}

// ---- The data: columns at once, details when they are asked for ----

const help = parsed(dataBlocks("help")[0]);
const types = new Map(help.types.map((type) => [type.type, type]));
const typeName = (type) => types.get(type).name;

/** The numbers of the first message of each block. */
const blockStarts = [];
const rows = readRows();
const rowCount = rows.type.length;

function readRows() {
    const all = { type: [], date: [], label: [], address: [], subject: [], from: [], place: [] };
    for (const block of dataBlocks("rows")) {
        const { texts, type, date, ...textColumns } = parsed(block);
        blockStarts.push(all.type.length);
        all.type.push(...type);
        all.date.push(...date);
        for (const [name, column] of Object.entries(textColumns)) {
            for (const text of column) all[name].push(texts[text]);
        }
        block.remove();
    }
    return all;
}

const detailBlocks = dataBlocks("details");
let lastBlock = { at: -1 };

function detailOf(row) {
    const at = blockStarts.findLastIndex((start) => start <= row);
    if (lastBlock.at !== at) lastBlock = { at, ...parsed(detailBlocks[at]) };
    const { texts, shapes, messages } = lastBlock;
    return { texts, shapes, ...messages[row - blockStarts[at]] };
}

/** "2008-09-18 17:54", in UTC; "" without a date. */
function dateText(seconds) {
    if (seconds === null) return "";
    return new Date(seconds * 1000).toISOString().slice(0, 16).replace("T", " ");
}

function domainOf(row) {
    const address = rows.address[row];
    const at = address.lastIndexOf("@");
    return at < 0 ? "" : address.slice(at + 1).toLowerCase();
}

// ---- Sorting and filtering ----

const columns = [
    { name: "verdict", title: "Verdict", key: (row) => typeName(rows.type[row]) },
    { name: "address", title: "Address", key: (row) => rows.address[row].toLowerCase() },
    { name: "subject", title: "Subject", key: (row) => rows.subject[row].toLowerCase() },
    { name: "rule", title: "Rule", key: (row) => rows.label[row].toLowerCase() },
    { name: "date", title: "Date (UTC)", key: (row) => rows.date[row] ?? "" },
    { name: "place", title: "Source", key: (row) => rows.place[row].toLowerCase() },
];
const sorting = { column: undefined, descending: false };
/** Each order of all rows is made once. */
const orders = new Map();

function sortedRows() {
    const { column, descending } = sorting;
    const name = column ? column.name + descending : "";
    if (!orders.has(name)) {
        const order = Array.from({ length: rowCount }, (_, row) => row);
        if (column) {
            const keys = order.map(column.key);
            const sign = descending ? -1 : 1;
            order.sort((a, b) => {
                if (keys[a] === keys[b]) return a - b;
                if (keys[a] === "" || keys[b] === "") return keys[a] === "" ? 1 : -1;
                return keys[a] < keys[b] ? -sign : sign;
            });
        }
        orders.set(name, order);
    }
    return orders.get(name);
}

/** What is searched, a text a row; made with the first search. */
let searched;

function searchedTexts() {
    searched ??= rows.type.map((type, row) =>
        [
            rows.address[row],
            rows.subject[row],
            rows.from[row],
            rows.label[row],
            typeName(type),
            dateText(rows.date[row]),
            rows.place[row],
        ]
            .join("\n")
            .toLowerCase(),
    );
    return searched;
}

/** Which types are shown; empty for all. */
const chosenTypes = new Set();
/** The rows that are shown, in order. */
let shown = [];

function update() {
    const words = find("search").value.toLowerCase().split(/\s+/).filter(Boolean);
    const texts = words.length > 0 ? searchedTexts() : [];
    const isFound = (row) => words.every((word) => texts[row].includes(word));
    const found = words.length > 0 ? sortedRows().filter(isFound) : sortedRows();
    const isChosen = (row) => chosenTypes.has(rows.type[row]);
    shown = chosenTypes.size > 0 ? found.filter(isChosen) : found;

    drawVerdicts(found);
    drawTime();
    drawDomains();
    drawTable();
    const isAll = shown.length === rowCount;
    find("found").textContent = isAll
        ? countOf(rowCount, "message")
        : `${number(shown.length)} of ${number(rowCount)}`;
    find("all").hidden = isAll && words.length === 0;
}

function searchFor(text) {
    const search = find("search");
    search.value = search.value === text ? "" : text;
    update();
}

// ---- Charts ----

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
        const domain = domainOf(row);
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
            isPressed: find("search").value === `@${domain}`,
            press: () => searchFor(`@${domain}`),
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
    for (let at = first * 1000; at <= last * 1000 && spans.size < 10 * mostSpans; ) {
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
    const title = chosenTypes.size > 0 ? drawnTypes.map(typeName).join(", ") : "Bounces";
    find("time-title").textContent = `${title} over time`;
    if (dated.length === 0) {
        find("time").replaceChildren(make("p", {}, "None has a date."));
        return;
    }
    // Clocks that are years off would press all the rest together.
    const dates = Float64Array.from(dated, (row) => rows.date[row]).sort();
    const strays = Math.floor(dates.length / 200);
    const { unit, spans } = spansBetween(dates[strays], dates[dates.length - 1 - strays]);
    let outside = 0;
    for (const row of dated) {
        const counts = spans.get(dateText(rows.date[row]).slice(0, unit.letters));
        if (!counts) outside += 1;
        else counts.set(rows.type[row], counts.get(rows.type[row]) + 1);
    }
    const notes = [`By ${unit.name}, of the Date field.`];
    if (dated.length < among.length) notes.push(`${number(among.length - dated.length)} undated.`);
    if (outside > 0) notes.push(`${number(outside)} far before or behind are left out.`);
    const legend = help.types
        .filter(({ type }) => isDrawn.has(type) && dated.some((row) => rows.type[row] === type))
        .map(({ name }) => make("span", { class: `dot ${name}` }, name));
    find("time").replaceChildren(
        timePicture(spans, unit, `${title} over time`),
        make("div", { class: "legend" }, ...legend, make("span", {}, notes.join(" "))),
    );
}

function timePicture(spans, unit, title) {
    const width = Math.max(find("time").clientWidth, 200);
    const height = 220;
    const area = { left: 44, top: 8, bottom: height - 26 };
    const totals = [...spans.values()].map((counts) => [...counts.values()].reduce((a, b) => a + b));
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
        const span = svg("g", {}, svg("title", {}, `${name}: ${summaryOf(spans.get(name)) || "none"}`));
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
        span.addEventListener("click", () => searchFor(name));
        if (i % labelEvery === 0) picture.append(svg("text", { x, y: height - 8 }, name));
        picture.append(span);
    });
    return picture;
}

// ---- The table: only rows in sight are in the document ----

const body = find("rows");
/** Rows in the document, by their place in `shown`. */
const drawn = new Map();
const unfolded = { row: -1, at: -1, element: undefined, height: 0 };
let rowHeight = 0;
let drawableCount = 0;

function drawHead() {
    const cells = columns.map((column) => {
        const button = make("button", { type: "button" }, column.title);
        const cell = make("div", { role: "columnheader", class: column.name }, button);
        button.addEventListener("click", () => {
            sorting.descending = sorting.column === column && !sorting.descending;
            sorting.column = column;
            for (const other of cells) other.removeAttribute("aria-sort");
            cell.setAttribute("aria-sort", sorting.descending ? "descending" : "ascending");
            update();
        });
        return cell;
    });
    find("head").replaceChildren(...cells);
}

function drawTable() {
    for (const element of drawn.values()) element.remove();
    drawn.clear();
    rowHeight = parseFloat(getComputedStyle(body).getPropertyValue("--row-height"));
    // Browsers cannot show elements of any height.
    drawableCount = Math.min(shown.length, Math.floor(15e6 / rowHeight));
    find("table").setAttribute("aria-rowcount", drawableCount + 1);
    unfolded.at = unfolded.row < 0 ? -1 : shown.indexOf(unfolded.row);
    if (unfolded.at < 0) fold();
    const stickyHeight = body.previousElementSibling.getBoundingClientRect().bottom;
    const hidden = stickyHeight - body.getBoundingClientRect().top;
    drawRows();
    if (hidden > 0) scrollBy(0, -hidden);
}

/** The place in `shown` of the row that is so far below the first one's top. */
function placeAt(y) {
    const { at, height } = unfolded;
    if (at < 0 || y < (at + 1) * rowHeight) return Math.max(0, Math.floor(y / rowHeight));
    return Math.max(at, Math.floor((y - height) / rowHeight));
}

const topOf = (place) =>
    place * rowHeight + (unfolded.at >= 0 && place > unfolded.at ? unfolded.height : 0);

function moveTo(element, y) {
    element.style.transform = `translateY(${y}px)`;
}

function drawRows() {
    const beyond = 400;
    const top = -body.getBoundingClientRect().top;
    const first = placeAt(top - beyond);
    const end = Math.min(drawableCount, placeAt(top + innerHeight + beyond) + 1);
    for (const [place, element] of drawn) {
        if (place >= first && place < end) continue;
        element.remove();
        drawn.delete(place);
    }
    // In the order of the table, for those who go by keys or listen.
    let next = null;
    for (let place = end - 1; place >= first; place -= 1) {
        let element = drawn.get(place);
        if (!element) {
            element = makeRow(place);
            drawn.set(place, element);
            body.insertBefore(element, next);
        }
        if (place === unfolded.at && element.nextSibling !== unfolded.element) {
            element.after(unfolded.element);
        }
        moveTo(element, topOf(place));
        next = element;
    }
    if (unfolded.at >= 0) moveTo(unfolded.element, (unfolded.at + 1) * rowHeight);
    body.style.height = `${topOf(drawableCount)}px`;
}

function makeRow(place) {
    const row = shown[place];
    const name = typeName(rows.type[row]);
    const isOpen = row === unfolded.row;
    const button = make("button", { type: "button", "aria-expanded": String(isOpen) });
    button.append(make("span", { class: `dot ${name}` }, name));
    const texts = {
        verdict: button,
        address: rows.address[row] || "–",
        subject: rows.subject[row] || "–",
        rule: rows.label[row] || "–",
        date: dateText(rows.date[row]) || "–",
        place: make("bdi", {}, rows.place[row]),
    };
    const cells = columns.map((column) =>
        make("div", { role: "cell", class: `text ${column.name}` }, texts[column.name]),
    );
    const element = make("div", { role: "row", class: "row", "aria-rowindex": place + 2 }, ...cells);
    element.classList.toggle("open", isOpen);
    element.addEventListener("click", () => {
        if (getSelection().isCollapsed) toggle(place);
    });
    return element;
}

function markOpen(place, isOpen) {
    const element = drawn.get(place);
    element?.classList.toggle("open", isOpen);
    element?.querySelector("button").setAttribute("aria-expanded", String(isOpen));
}

function fold() {
    markOpen(unfolded.at, false);
    sizes.disconnect();
    unfolded.element?.remove();
    Object.assign(unfolded, { row: -1, at: -1, element: undefined, height: 0 });
}

function toggle(place) {
    const wasOpen = unfolded.at === place;
    const before = drawn.get(place).getBoundingClientRect().top;
    fold();
    if (!wasOpen) {
        const row = shown[place];
        const cell = make("div", { role: "cell", "aria-colspan": columns.length }, ...explain(row));
        const element = make("div", { role: "row", class: "unfolded" }, cell);
        body.append(element);
        Object.assign(unfolded, { row, at: place, element, height: element.offsetHeight });
        markOpen(place, true);
        sizes.observe(element);
    }
    drawRows();
    // What is folded above must not move the row that was clicked.
    scrollBy(0, drawn.get(place).getBoundingClientRect().top - before);
}

/** An explanation grows when one of its steps is unfolded, or the window narrows. */
const sizes = new ResizeObserver(() => {
    if (!unfolded.element || unfolded.element.offsetHeight === unfolded.height) return;
    unfolded.height = unfolded.element.offsetHeight;
    drawRows();
});

body.addEventListener("keydown", (event) => {
    const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
    const row = event.target.closest(".row");
    if (event.key === "Escape" && unfolded.at >= 0) {
        const place = unfolded.at;
        toggle(place);
        drawn.get(place).querySelector("button").focus();
    } else if (step && row) {
        event.preventDefault();
        const place = [...drawn].find(([, element]) => element === row)[0];
        const button = drawn.get(place + step)?.querySelector("button");
        button?.focus({ preventScroll: true });
        button?.closest(".row").scrollIntoView({ block: "nearest" });
    }
});

// ---- What a message unfolds to ----

function explain(row) {
    const detail = detailOf(row);
    const text = (at) => detail.texts[at];
    const type = types.get(rows.type[row]);
    const label = rows.label[row];
    const rule = help.rules[label];
    const facts = [
        ["Verdict", `${type.name} (${type.type}): ${rule?.meaning ?? type.meaning}`],
        ["What to do", rule?.advice ?? type.advice],
        ["Rule", rule ? `${label}: ${rule.looksFor}` : label],
        ["Phrase", detail.phrase && text(detail.phrase)],
        ["Address", rows.address[row]],
        ["Subject", rows.subject[row]],
        ["From", rows.from[row]],
        ["Source", rows.place[row]],
        ["Reported by", detail.reportedBy && text(detail.reportedBy)],
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
        const [original, final, action, status, diagnostic, remote] = recipient.map((at) => texts[at]);
        const addresses = [...new Set([original, final])].filter(Boolean).join(" → ");
        const more = [action, status, diagnostic, remote && `from ${remote}`].filter(Boolean);
        list.append(make("li", {}, addresses || "–", make("small", {}, more.join(", "))));
    }
    if (moreRecipients) list.append(make("li", { class: "empty" }, `and ${number(moreRecipients)} more`));
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

// ---- Begin ----

function drawTotals() {
    const counts = countTypes(rows.type.keys());
    const bounces = bounceTypes.reduce((sum, type) => sum + counts.get(type), 0);
    const parts = [countOf(rowCount, "message")];
    if (rowCount > 0) {
        parts.push(`${countOf(bounces, "bounce")} (${percent(bounces, rowCount)})`);
        const addresses = new Set(rows.address.map((address) => address.toLowerCase()));
        addresses.delete("");
        parts.push(`${number(addresses.size)} ${addresses.size === 1 ? "address" : "addresses"}`);
    }
    find("totals").textContent = parts.join(" · ");
}

/** Calls `draw` once before the next picture, however often it is asked to. */
function beforeNextPicture(draw) {
    let isPlanned = false;
    return () => {
        if (isPlanned) return;
        isPlanned = true;
        requestAnimationFrame(() => {
            isPlanned = false;
            draw();
        });
    };
}

find("search").addEventListener("input", beforeNextPicture(update));
find("all").addEventListener("click", () => {
    chosenTypes.clear();
    find("search").value = "";
    update();
    find("search").focus();
});
addEventListener("scroll", beforeNextPicture(drawRows), { passive: true });
addEventListener(
    "resize",
    beforeNextPicture(() => {
        drawTime();
        drawTable();
    }),
);
drawHead();
drawTotals();
update();
