// The state of the page in the fragment of its address, so that it can be linked to and gone
// back to: what is searched, and how the table is sorted.

function fragmentOf() {
    const parts = [];
    const search = searched().trim();
    if (search) parts.push(`search=${encodeURIComponent(search)}`);
    if (sorting.column) parts.push(`sort=${sorting.descending ? "-" : ""}${sorting.column.name}`);
    // These need no escapes there, and are easier to read without.
    return parts.join("&").replaceAll("%3A", ":").replaceAll("%2C", ",").replaceAll("%40", "@");
}

const fragmentNow = () => location.hash.slice(1);
let plannedNote;

/** Writes the state into the address: as a step to go back from, or once typing has paused. */
function noteState(isStep) {
    clearTimeout(plannedNote);
    const note = () => {
        const fragment = fragmentOf();
        if (fragment === fragmentNow()) return;
        if (isStep) history.pushState(null, "", `#${fragment}`);
        else history.replaceState(null, "", `#${fragment}`);
    };
    if (isStep) note();
    else plannedNote = setTimeout(note, 300);
}

/** The state that the address asks for; whatever it holds, only text becomes of it. */
function readState() {
    const asked = new Map();
    for (const part of fragmentNow().split("&")) {
        const [name, value = ""] = part.split(/=(.*)/s);
        try {
            asked.set(name, decodeURIComponent(value));
        } catch {
            // No text was encoded there.
        }
    }
    find("search").value = asked.get("search") ?? "";
    const sort = asked.get("sort") ?? "";
    sorting.descending = sort.startsWith("-");
    sorting.column = columns.find(({ name }) => name === sort.replace(/^-/, ""));
}

addEventListener("popstate", () => {
    clearTimeout(plannedNote);
    readState();
    markSorting();
    update();
});
