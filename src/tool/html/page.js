// Begins the page, and draws it anew where the window changes.

function drawTotals() {
    const parts = [counted(messageCount, "message")];
    if (messageCount > 0) {
        const isBounce = new Set(bounceTypes);
        const bounces = firstRows.filter((row) => isBounce.has(rows.type[row])).length;
        parts.push(`${counted(bounces, "bounce")} (${percent(bounces, messageCount)})`);
        const addresses = new Set(rows.recipient.map((address) => address.toLowerCase()));
        addresses.delete("");
        parts.push(counted(addresses.size, "address", "addresses"));
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

const updateSoon = beforeNextPicture(update);
find("search").addEventListener("input", () => {
    updateSoon();
    noteState(false);
});
find("all").addEventListener("click", () => {
    searchFor("");
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
// In a frame, the page around it takes what is dropped: it hears that something comes.
if (parent !== window) addEventListener("dragenter", () => parent.postMessage("dragenter", "*"));
readState();
drawHead();
drawTotals();
update();
// Of a single message there is nothing to count, and all to explain.
if (messageCount === 1) {
    document.querySelector(".charts").hidden = true;
    toggle(0);
}
