// The table. Only the rows in sight are in the document.

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
            sortBy(column, sorting.column === column && !sorting.descending);
            markSorting();
            noteState(true);
        });
        return cell;
    });
    find("head").replaceChildren(...cells);
    markSorting();
}

function markSorting() {
    columns.forEach((column, i) => {
        const cell = find("head").children[i];
        const direction = sorting.descending ? "descending" : "ascending";
        if (column === sorting.column) cell.setAttribute("aria-sort", direction);
        else cell.removeAttribute("aria-sort");
    });
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
    drawRows();
}

const headBottom = () => body.previousElementSibling.getBoundingClientRect().bottom;

/** Scrolls back to the first row, unless that is in sight. */
function showTableTop() {
    const hidden = headBottom() - body.getBoundingClientRect().top;
    if (hidden <= 0) return;
    scrollBy(0, -hidden);
    drawRows();
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

/** What unfolds a row, with the colour of what it counts as. */
function rowButton(row, content, isOpen) {
    const mark = make("span", { class: `dot ${kindOf(row)}` }, content);
    return make("button", { type: "button", "aria-expanded": String(isOpen) }, mark);
}

function makeRow(place) {
    const row = shown[place];
    const isOpen = row === unfolded.row;
    const cells = columns.map(({ name, text }, i) => {
        const content = text(row) || "–";
        const title = i > 0 && content.length > 12 ? content : undefined;
        const inside = i === 0 ? rowButton(row, content, isOpen) : content;
        return make("div", { role: "cell", class: `text ${name}`, title }, inside);
    });
    const element = make(
        "div",
        { role: "row", class: "row", "aria-rowindex": place + 2 },
        ...cells,
    );
    element.classList.toggle("open", isOpen);
    element.addEventListener("click", (event) => {
        const isSelecting = !event.target.closest("button") && !getSelection().isCollapsed;
        if (!isSelecting) toggle(place);
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
    const before = topOf(place);
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
    // What was folded above must not move the row that was clicked.
    const moved = topOf(place) - before;
    if (moved === 0) return;
    scrollBy(0, moved);
    drawRows();
}

/** An explanation grows when one of its steps is unfolded, or the window narrows. */
const sizes = new ResizeObserver(() => {
    if (!unfolded.element || unfolded.element.offsetHeight === unfolded.height) return;
    unfolded.height = unfolded.element.offsetHeight;
    drawRows();
});

/** Brings a row into sight, and the focus to it. */
function focusRow(place) {
    const top = body.getBoundingClientRect().top + topOf(place);
    const above = headBottom() - top;
    const below = top + rowHeight - innerHeight;
    if (above > 0) scrollBy(0, -above);
    else if (below > 0) scrollBy(0, below);
    drawRows();
    drawn.get(place).querySelector("button").focus({ preventScroll: true });
}

body.addEventListener("keydown", (event) => {
    const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
    const row = event.target.closest(".row");
    if (event.key === "Escape" && unfolded.at >= 0) {
        const place = unfolded.at;
        fold();
        focusRow(place);
    } else if (step && row) {
        event.preventDefault();
        const place = [...drawn].find(([, element]) => element === row)[0] + step;
        if (place >= 0 && place < drawableCount) focusRow(place);
    }
});
