// The page around the report: takes files, has a worker read them, and shows what it makes.
// Nothing of a message comes near this document: the report is a document of its own in a frame
// without rights, and what is told here is text.

const find = (id) => document.getElementById(id);
const number = (value) => value.toLocaleString("en");
const counted = (count, one) => `${number(count)}\u00a0${one}${count === 1 ? "" : "s"}`;
const megabytes = (bytes) => (bytes / 1e6).toFixed(1);

/** What a data block of this page holds. */
const blockOf = (id) => find(id).textContent;

async function compile() {
    const packed = Uint8Array.from(atob(blockOf("module")), (letter) => letter.charCodeAt(0));
    const bytes = new Blob([packed]).stream().pipeThrough(new DecompressionStream("gzip"));
    return WebAssembly.compile(await new Response(bytes).arrayBuffer());
}

const compiled = compile();
const workerUrl = URL.createObjectURL(new Blob([blockOf("worker")], { type: "text/javascript" }));

/** What reads now, and the report that is shown. */
let worker;
let frame;

// --- Reading ---------------------------------------------------------------------------

function endReading() {
    worker?.terminate();
    worker = undefined;
    find("progress").hidden = true;
    find("stop").hidden = true;
}

/** Reads `files`: objects with a File and the name to show. */
async function read(files) {
    endReading();
    clearProblems();
    if (files.length === 0) {
        tell("There is no mail in it.");
        return;
    }
    tell("Reading …");
    find("progress").removeAttribute("value");
    find("progress").hidden = false;
    find("stop").hidden = false;
    const mine = (worker = new Worker(workerUrl));
    const total = files.reduce((sum, { file }) => sum + file.size, 0);
    const handlers = {
        progress({ messages, bytes }) {
            find("progress").max = total;
            find("progress").value = bytes;
            tell(`${counted(messages, "message")}, ` +
                `${megabytes(bytes)} of ${megabytes(total)}\u00a0MB`);
        },
        problem: addProblem,
        done({ page, messages, ending }) {
            endReading();
            tell([`${counted(messages, "message")} in ${counted(files.length, "file")}`, ending]
                .filter(Boolean).join(". "));
            if (messages > 0) show(page);
        },
        failed({ reason }) {
            endReading();
            tell(`The mail cannot be read: ${reason}`);
        },
    };
    worker.onmessage = ({ data }) => handlers[data.kind](data);
    worker.onerror = () => {
        endReading();
        tell("The mail cannot be read in this browser.");
    };
    try {
        const module = await compiled;
        mine.postMessage({ module, files });
    } catch {
        worker?.onerror();
    }
}

const tell = (text) => {
    find("state").textContent = text;
};

const problems = { list: find("problems").querySelector("ul"), count: 0, most: 200 };

function clearProblems() {
    problems.count = 0;
    problems.list.replaceChildren();
    find("problems").hidden = true;
}

function addProblem({ place, reason }) {
    problems.count += 1;
    find("problems").hidden = false;
    find("problems").querySelector("summary").textContent =
        `${number(problems.count)} skipped`;
    if (problems.count > problems.most) return;
    const item = document.createElement("li");
    item.textContent = problems.count < problems.most ? `${place}: ${reason}` : "…";
    problems.list.append(item);
}

function show(page) {
    if (frame) URL.revokeObjectURL(frame.src);
    frame = document.createElement("iframe");
    frame.title = "Report";
    frame.sandbox = "allow-scripts allow-downloads";
    frame.allow = "clipboard-write";
    frame.src = URL.createObjectURL(page);
    find("report").replaceChildren(frame);
    find("start").hidden = true;
    find("brand").hidden = true;  // the report has its own
    find("problems").before(find("choices"));
    find("save").href = frame.src;
    find("save").hidden = false;
}

find("stop").addEventListener("click", () => {
    endReading();
    tell("Stopped.");
});

// --- Choosing --------------------------------------------------------------------------

/** Without what is no mail in a Maildir: it is in "cur" and "new" of the folder only. */
function withoutOtherFiles(files) {
    const folderOf = (name) => name.slice(0, name.lastIndexOf("/") + 1);
    const maildirs = new Set();
    for (const { name } of files) {
        const [, maildir] = folderOf(name).match(/^(.*\/)(?:cur|new)\/$/s) ?? [];
        if (maildir) maildirs.add(maildir);
    }
    return files.filter(({ name }) => {
        const folder = folderOf(name);
        return !maildirs.has(folder) && !maildirs.has(folder.replace(/(^|\/)tmp\/$/, "$1"));
    });
}

function readChosen(input) {
    const files = [...input.files].map((file) => ({
        file,
        name: file.webkitRelativePath || file.name,
    }));
    input.value = "";  // so that the same can be chosen again
    const byName = (a, b) => (a.name < b.name ? -1 : a.name > b.name ? 1 : 0);
    read(withoutOtherFiles(files.sort(byName)));
}

for (const [button, input] of [["choose", "files"], ["choose-folder", "folder"]]) {
    find(button).addEventListener("click", () => find(input).click());
    find(input).addEventListener("change", () => readChosen(find(input)));
}

// --- Dropping and pasting --------------------------------------------------------------

/** The files in a folder and all below, in the order of their names. */
async function filesBelow(entry, path) {
    if (entry.isFile) {
        const file = await new Promise((done, failed) => entry.file(done, failed));
        return [{ file, name: path }];
    }
    const entries = [];
    const reader = entry.createReader();
    for (;;) {
        const more = await new Promise((done, failed) => reader.readEntries(done, failed));
        if (more.length === 0) break;
        entries.push(...more);
    }
    entries.sort((a, b) => (a.name < b.name ? -1 : 1));
    const files = [];
    for (const inner of entries) {
        for (const file of await filesBelow(inner, `${path}/${inner.name}`)) files.push(file);
    }
    return files;
}

/** Has to ask for all of them before it waits for any. */
async function readDropped(transfer) {
    const dropped = [...transfer.items].filter(({ kind }) => kind === "file").map((item) => ({
        file: item.getAsFile(),
        entry: item.webkitGetAsEntry?.(),
    }));
    const files = [];
    const failed = [];
    for (const { file, entry } of dropped) {
        if (!entry?.isDirectory) {
            files.push({ file, name: file.name });
            continue;
        }
        try {
            for (const inner of await filesBelow(entry, entry.name)) files.push(inner);
        } catch {
            failed.push({ place: entry.name, reason: "cannot be read; try “Choose a folder”" });
        }
    }
    await read(withoutOtherFiles(files));
    for (const problem of failed) addProblem(problem);
}

const markDragging = (isDragging) => document.body.classList.toggle("dragging", isDragging);

addEventListener("dragenter", () => markDragging(true));
// The frame gets the events above it, until the place to drop covers it.
addEventListener("message", ({ source, data }) => {
    if (frame && source === frame.contentWindow && data === "dragenter") markDragging(true);
});
find("drop").addEventListener("dragleave", () => markDragging(false));
addEventListener("dragover", (event) => {
    event.preventDefault();
    event.dataTransfer.dropEffect = "copy";
});
addEventListener("drop", (event) => {
    event.preventDefault();
    markDragging(false);
    const text = event.dataTransfer.getData("text/plain");
    if (event.dataTransfer.files.length > 0) readDropped(event.dataTransfer);
    else if (text) readText(text);
});

function readText(text) {
    const name = "pasted.eml";
    read([{ file: new File([text], name), name }]);
}

addEventListener("paste", ({ clipboardData }) => {
    const files = [...clipboardData.files].map((file) => ({ file, name: file.name }));
    const text = clipboardData.getData("text/plain");
    if (files.length > 0) read(files);
    else if (text) readText(text);
});

// --- Without a network -----------------------------------------------------------------

// From a host the page can be installed; as a file it is there already.
if (location.protocol.startsWith("http") && navigator.serviceWorker) {
    const link = document.createElement("link");
    link.rel = "manifest";
    link.href = "manifest.webmanifest";
    document.head.append(link);
    // Where its script is not beside the page, only that is missing.
    navigator.serviceWorker.register("service-worker.js").catch(() => {});
}
