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

/** Whether a row has a word: "domain:" and "date:" ask for exactly that. */
function searchFor(word) {
    const [, name, value] = word.match(/^(domain|date):(.*)$/) ?? [];
    if (name === "domain") return (row) => domains[row] === value;
    if (name === "date") return (row) => dateTexts[row].startsWith(value.replace("t", " "));
    const texts = searchedTexts();
    return (row) => texts[row].includes(word);
}

/** Chooses what is shown; returns what the search found, of any type. */
function select() {
    const searches = searchedWords().map(searchFor);
    const isFound = (row) => searches.every((search) => search(row));
    const found = searches.length > 0 ? sortedRows().filter(isFound) : sortedRows();
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
    const count = isAll
        ? counted(rowCount, "message")
        : `${number(shown.length)} of ${number(rowCount)}`;
    const isCut = drawableCount < shown.length;
    find("found").textContent = isCut
        ? `${count}, the first ${number(drawableCount)} below`
        : count;
    find("all").hidden = isAll && searchedWords().length === 0;
}

function sortBy(column) {
    sorting.descending = sorting.column === column && !sorting.descending;
    sorting.column = column;
    select();
    drawTable();
    showTableTop();
}

/** Searches for a word alone; no longer, when it is already. */
function toggleSearch(word) {
    const search = find("search");
    search.value = search.value === word ? "" : word;
    update();
}
