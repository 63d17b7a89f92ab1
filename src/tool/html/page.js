// Begins the page, and draws it anew where the window changes.

function drawTotals() {
    const counts = countTypes(rows.type.keys());
    const bounces = bounceTypes.reduce((sum, type) => sum + counts.get(type), 0);
    const parts = [counted(rowCount, "message")];
    if (rowCount > 0) {
        parts.push(`${counted(bounces, "bounce")} (${percent(bounces, rowCount)})`);
        const addresses = new Set(rows.address.map((address) => address.toLowerCase()));
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
