// Begins the page, and draws it anew where the window changes.

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
        drawTimes();
        drawTable();
    }),
);
// In a frame, the page around it takes what is dropped: it hears that something comes.
if (parent !== window) addEventListener("dragenter", () => parent.postMessage("dragenter", "*"));
readState();
drawHead();
find("totals").textContent = totals().join(" · ");
update();
begun();
