// Which messages are shown, and in which order.

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
            dateTexts[row],
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

const searchedWords = () => find("search").value.toLowerCase().split(/\s+/).filter(Boolean);

/** Chooses what is shown; returns what the search found, of any type. */
function select() {
    const words = searchedWords();
    const texts = words.length > 0 ? searchedTexts() : [];
    const isFound = (row) => words.every((word) => texts[row].includes(word));
    const found = words.length > 0 ? sortedRows().filter(isFound) : sortedRows();
    const isChosen = (row) => chosenTypes.has(rows.type[row]);
    shown = chosenTypes.size > 0 ? found.filter(isChosen) : found;
    return found;
}

/** After a change of what is searched or chosen. */
function update() {
    drawVerdicts(select());
    drawTime();
    drawDomains();
    drawTable();
    showTableTop();
    const isAll = shown.length === rowCount;
    find("found").textContent = isAll
        ? counted(rowCount, "message")
        : `${number(shown.length)} of ${number(rowCount)}`;
    find("all").hidden = isAll && searchedWords().length === 0;
}

function sortBy(column) {
    sorting.descending = sorting.column === column && !sorting.descending;
    sorting.column = column;
    select();
    drawTable();
    showTableTop();
}

function searchFor(text) {
    const search = find("search");
    search.value = search.value === text ? "" : text;
    update();
}
