// The addresses of what is shown, to take along.

/** Each once, in the order of the table; what cannot stand on a line alone is left out. */
function shownAddresses() {
    const addresses = new Map();
    for (const row of shown) {
        const address = addressOf(row);
        const key = address.toLowerCase();
        if (addresses.has(key) || !/^[^\p{Cc}\u2028\u2029]+@[^\p{Cc}\s]+$/u.test(address)) continue;
        addresses.set(key, address);
    }
    return [...addresses.values()];
}

let addressCount = 0;

function drawAddressTools() {
    addressCount = shownAddresses().length;
    const name = counted(addressCount, "address", "addresses");
    find("copy").textContent = `Copy ${name}`;
    for (const id of ["copy", "download"]) find(id).disabled = addressCount === 0;
}

const addressLines = () => shownAddresses().map((address) => `${address}\n`).join("");

/** For browsers that keep the clipboard from pages which came without TLS. */
function copyByCommand(text) {
    const field = make("textarea", { class: "aside", "aria-hidden": "true", tabindex: -1 });
    const focused = document.activeElement;
    field.value = text;
    document.body.append(field);
    field.select();
    const isCopied = document.execCommand("copy");
    field.remove();
    focused?.focus({ preventScroll: true });
    return isCopied;
}

async function copy(text) {
    try {
        await navigator.clipboard.writeText(text);
        return true;
    } catch {
        return copyByCommand(text);
    }
}

find("copy").addEventListener("click", async () => {
    const isCopied = await copy(addressLines());
    find("copied").textContent = isCopied ? "Copied." : "The browser does not allow copying.";
    setTimeout(() => find("copied").replaceChildren(), 3000);
});

find("download").addEventListener("click", () => {
    const href = URL.createObjectURL(new Blob([addressLines()], { type: "text/plain" }));
    make("a", { href, download: "addresses.txt" }).click();
    setTimeout(() => URL.revokeObjectURL(href), 60_000);
});
