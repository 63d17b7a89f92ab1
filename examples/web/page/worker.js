// Reads files by the module, and makes the page of them. Runs in a worker of its own, where files
// can be read while the module waits. Stands behind bindings/node/js/engine.js, which has the
// charsets of the host.

const mostMessages = 100_000;
const mostUnpacked = 2 * 1024 ** 3;
const pieceSize = 4 * 1024 ** 2;

/** Reads a file from its beginning, a piece at a time. */
class Input {
    #file;
    #reader = new FileReaderSync();
    #piece = new Uint8Array();
    /** Where the piece begins, and how much of it was taken. */
    #start = 0;
    #taken = 0;
    /** Why it could not be read to its end. */
    problem = "";

    constructor(file) {
        this.#file = file;
    }

    get bytesRead() {
        return this.#start + this.#taken;
    }

    take(size) {
        if (this.#taken === this.#piece.length) this.#next();
        const bytes = this.#piece.subarray(this.#taken, this.#taken + size);
        this.#taken += bytes.length;
        return bytes;
    }

    #next() {
        this.#start += this.#piece.length;
        this.#taken = 0;
        const piece = this.#file.slice(this.#start, this.#start + pieceSize);
        try {
            this.#piece = new Uint8Array(this.#reader.readAsArrayBuffer(piece));
        } catch {
            this.#piece = new Uint8Array();
            this.problem = "cannot be read";
        }
    }
}

/** A file without its compression by gzip, if it has any. */
async function unpacked(file) {
    if (file.size === 0) await file.arrayBuffer();  // fails where the file only is gone
    const [first, second] = new Uint8Array(await file.slice(0, 2).arrayBuffer());
    if (first !== 0x1f || second !== 0x8b) return file;
    let size = 0;
    const bounded = new TransformStream({
        transform(bytes, controller) {
            size += bytes.length;
            if (size > mostUnpacked) throw new RangeError("unpacks to more than 2 GiB");
            controller.enqueue(bytes);
        },
    });
    const content = file.stream().pipeThrough(new DecompressionStream("gzip"));
    return new Response(content.pipeThrough(bounded)).blob();
}

/** What was made so far. The browser can keep a Blob elsewhere than in memory. */
class Output {
    #whole = [];
    #pieces = [];
    #size = 0;

    add(bytes) {
        this.#pieces.push(bytes);
        this.#size += bytes.length;
        if (this.#size > pieceSize) this.#store();
    }

    #store() {
        this.#whole.push(new Blob(this.#pieces));
        this.#pieces = [];
        this.#size = 0;
    }

    take() {
        this.#store();
        return new Blob(this.#whole.splice(0), { type: "text/html" });
    }
}

/** The run over some files. */
class Run {
    #module;
    #files;
    #exports;
    #input;
    #output = new Output();
    #name = "";
    #messages = 0;
    /** Of the files as they are, compressed or not. */
    #bytesBefore = 0;
    /** How many of them a byte of the input stands for. */
    #scale = 1;
    #toldAt = 0;
    #decoder = new TextDecoder();

    constructor(module, files) {
        this.#module = module;
        this.#files = files;
    }

    #begin() {
        const memory = () => this.#exports.memory;
        const bytesAt = (at, size) => new Uint8Array(memory().buffer, at >>> 0, size >>> 0);
        const host = {
            ...hostCharsets(memory),
            read: (at, size) => {
                const bytes = this.#input.take(size >>> 0);
                bytesAt(at, bytes.length).set(bytes);
                return bytes.length;
            },
            write: (at, size) => this.#output.add(bytesAt(at, size).slice()),
            classified: () => {
                this.#messages += 1;
                this.#tell();
                return this.#messages < mostMessages ? 1 : 0;
            },
            problem: (index, reason, size) =>
                this.#problem(this.#decoder.decode(bytesAt(reason, size)), index),
        };
        const stop = () => {
            throw new WebAssembly.RuntimeError("the module stopped");
        };
        // What the C library would use at most to say why it stops.
        const system = new Proxy({}, { get: () => stop });
        const imports = { host, wasi_snapshot_preview1: system };
        this.#exports = new WebAssembly.Instance(this.#module, imports).exports;
        this.#exports._initialize();
        this.#exports.page_begin();
    }

    #tell() {
        const now = performance.now();
        if (now - this.#toldAt < 100) return;
        this.#toldAt = now;
        const bytes = this.#bytesBefore + this.#input.bytesRead * this.#scale;
        postMessage({ kind: "progress", messages: this.#messages, bytes });
    }

    #problem(reason, index = 0) {
        const place = index > 0 ? `${this.#name}:${index}` : this.#name;
        postMessage({ kind: "problem", place, reason });
    }

    async #add(file, name) {
        this.#name = name;
        let content;
        try {
            content = await unpacked(file);
        } catch (error) {
            this.#problem(error instanceof RangeError ? error.message
                : "cannot be read, or is no whole gzip file");
            return;
        }
        this.#input = new Input(content);
        this.#scale = content.size > 0 ? file.size / content.size : 1;
        const letters = new TextEncoder().encode(name);
        const at = this.#exports.page_name(letters.length) >>> 0;
        new Uint8Array(this.#exports.memory.buffer, at, letters.length).set(letters);
        this.#exports.page_add(content.size);
        if (this.#input.problem) this.#problem(this.#input.problem);
    }

    /** Ends the page. Where the module has stopped, messages that were not written are lost. */
    async make() {
        let ending;
        this.#begin();
        try {
            for (const { file, name } of this.#files) {
                if (this.#messages >= mostMessages) {
                    ending = `The rest was not read: a report has ${mostMessages.toLocaleString("en")} messages at most.`;
                    break;
                }
                await this.#add(file, name);
                this.#bytesBefore += file.size;
            }
            this.#exports.page_finish();
        } catch (error) {
            ending = `Reading stopped in ${this.#name} (${error.message}): ` +
                "the report lacks its last messages.";
            this.#finishAnew();
        }
        postMessage({ kind: "done", page: this.#output.take(), messages: this.#messages, ending });
    }

    /** What every page ends in, from a module that has not stopped. */
    #finishAnew() {
        const made = this.#output;
        this.#output = new Output();
        this.#begin();
        this.#output = made;
        this.#exports.page_finish();
    }
}

// A promise that nobody waits for would fail unseen.
onmessage = async ({ data: { module, files } }) => {
    try {
        await new Run(module, files).make();
    } catch (error) {
        postMessage({ kind: "failed", reason: error.message });
    }
};
