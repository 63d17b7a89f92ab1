// Which rows are shown, and in which order.

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

/** What is searched for: the text of the field. */
const searched = () => find("search").value;
/** The rows that are shown, in order. */
let shown = [];
/** The rows that are found without the terms of a name, by that name: its chart counts them, so
    that other values can be added. */
let foundBeside = new Map();

function select() {
    const chartNames = charts.map(({ name }) => name);
    const tests = new Map();
    for (const term of termsOf(searched())) {
        const name = chartNames.includes(term.name) && !term.excludes ? term.name : "";
        tests.set(name, [...(tests.get(name) ?? []), testOf(term)]);
    }
    const holds = (name, row) => tests.get(name)?.every((test) => test(row)) ?? true;
    const found = tests.has("") ? sortedRows().filter((row) => holds("", row)) : sortedRows();
    foundBeside = new Map();
    const asked = chartNames.filter((name) => tests.has(name));
    if (asked.length === 0) {
        shown = found;
        return;
    }
    shown = [];
    for (const name of asked) foundBeside.set(name, []);
    for (const row of found) {
        const missed = asked.filter((name) => !holds(name, row));
        if (missed.length === 0) shown.push(row);
        const counting = missed.length === 0 ? asked : missed.length === 1 ? missed : [];
        for (const name of counting) foundBeside.get(name).push(row);
    }
}

/** The rows that a chart counts. */
const countedFor = (name) => foundBeside.get(name) ?? shown;

/** After a change of what is searched. */
function update() {
    select();
    drawBars();
    drawTimes();
    drawTable();
    showTableTop();
    drawFound();
    drawAddressTools();
}

function drawFound() {
    const isAll = shown.length === rowCount;
    const count = isAll
        ? counted(rowCount, "row")
        : `${number(shown.length)} of ${number(rowCount)}`;
    const isCut = drawableCount < shown.length;
    find("found").textContent = isCut
        ? `${count}, the first ${number(drawableCount)} below`
        : count;
    find("all").hidden = searched().trim() === "";
}

function sortBy(column, descending) {
    sorting.descending = descending;
    sorting.column = column;
    select();
    drawTable();
    showTableTop();
}

/** Searches for something else, as a step that the browser goes back from. */
function searchFor(search) {
    find("search").value = search;
    update();
    noteState(true);
}

/** Whether the charts stand above each other, and the table far below. */
const isNarrow = () => matchMedia("(max-width: 700px)").matches;

/** After a press in a chart, brings the table into sight where the charts hide it. */
function showTable() {
    if (isNarrow()) find("messages").scrollIntoView();
}
