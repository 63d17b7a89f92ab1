// The module behind one interface, for Node and for browsers.

/**
 * The labels (WHATWG Encoding) of charsets whose name in the C library is none. Some have
 * characters that the encoding lacks; those become U+FFFD.
 * @type {Record<string, string>}
 */
const labels = {
    'CP932': 'shift_jis',
    'CP949': 'euc-kr',
    'EUC-CN': 'gbk',
    'EUC-JP-MS': 'euc-jp',
    'IBM874': 'windows-874',
    'ISO-2022-JP-1': 'iso-2022-jp',
    'ISO-2022-JP-2': 'iso-2022-jp',
    'ISO-2022-JP-MS': 'iso-2022-jp',
    'CP10007': 'x-mac-cyrillic',
    'MAC-UK': 'x-mac-cyrillic',
    'UCS-2BE': 'utf-16be',
    'UCS-2LE': 'utf-16le',
};

const wantsTrace = 1;
const wantsData = 2;

// The memory of a module never shrinks. Above this size it is given up, and a new one begun.
const keptMemory = 64 * 1024 * 1024;

const encoder = new TextEncoder();
const utf8 = new TextDecoder('utf-8', { ignoreBOM: true });

/**
 * @typedef {object} Exports What src/Module.cpp exports.
 * @property {WebAssembly.Memory} memory
 * @property {() => void} _initialize
 * @property {(size: number) => number} bouncecheck_room
 * @property {() => number} bouncecheck_add_verp
 * @property {(wanted: number) => number} bouncecheck_classify
 * @property {() => number} bouncecheck_result
 * @property {() => void} bouncecheck_free
 */

/** @param {string} name */
function decoderOf(name) {
    try {
        return new TextDecoder(labels[name] ?? name, { ignoreBOM: true });
    } catch {
        return null;  // the host has no such charset
    }
}

/**
 * The functions of src/HostCharsets.cpp: the charsets of the host.
 * @param {() => WebAssembly.Memory} memory
 */
function hostCharsets(memory) {
    /** @type {Map<string, TextDecoder | null>} */
    const decoders = new Map();
    let decoded = new Uint8Array();
    /** @param {number} at @param {number} size */
    const bytesAt = (at, size) => new Uint8Array(memory().buffer, at >>> 0, size >>> 0);
    /** @param {number} at @param {number} size */
    const decoderAt = (at, size) => {
        const name = utf8.decode(bytesAt(at, size));
        let decoder = decoders.get(name);
        // In Chromium that of ISO-2022-JP keeps its state from one text to the next.
        if (decoder === undefined || decoder?.encoding === 'iso-2022-jp') {
            decoders.set(name, decoder = decoderOf(name));
        }
        return decoder;
    };
    return {
        /** @param {number} name @param {number} nameSize */
        hasCharset: (name, nameSize) => decoderAt(name, nameSize) ? 1 : 0,
        /** @param {number} name @param {number} nameSize @param {number} at @param {number} size */
        decode: (name, nameSize, at, size) => {
            const text = decoderAt(name, nameSize)?.decode(bytesAt(at, size)) ?? '';
            decoded = encoder.encode(text);
            return decoded.length;
        },
        /** @param {number} out @param {number} size */
        takeDecoded: (out, size) => {
            bytesAt(out, size).set(decoded.subarray(0, size >>> 0));
            decoded = new Uint8Array();
        },
    };
}

/**
 * @param {WebAssembly.Module} module
 * @returns {Exports}
 */
function instantiate(module) {
    // The C library would write its last words to a file before it stops the module.
    const stop = () => { throw new WebAssembly.RuntimeError('the module stopped'); };
    /** @type {Exports} */
    let exports;
    const system = { fd_close: stop, fd_seek: stop, fd_write: stop };
    const host = hostCharsets(() => exports.memory);
    const instance = new WebAssembly.Instance(module, { host, wasi_snapshot_preview1: system });
    exports = /** @type {any} */ (instance.exports);
    exports._initialize();
    return exports;
}

/** @param {unknown} message */
function bytesOf(message) {
    if (typeof message === 'string') return encoder.encode(message);
    // By its tag, since test runners and frames have a Uint8Array of their own.
    if (ArrayBuffer.isView(message) && Reflect.get(message, Symbol.toStringTag) === 'Uint8Array') {
        return /** @type {Uint8Array} */ (message);
    }
    throw new TypeError('a message is a Uint8Array or a string');
}

/** @param {unknown} verp */
function patternsOf(verp) {
    const patterns = verp === undefined ? [] : Array.isArray(verp) ? verp : [verp];
    if (patterns.every((pattern) => typeof pattern === 'string')) return patterns;
    throw new TypeError('verp is a string or an array of strings');
}

export class Engine {
    #module;
    /** @type {Exports | null} */
    #exports = null;

    /** @param {WebAssembly.Module} module */
    constructor(module) {
        this.#module = module;
    }

    /**
     * See index.d.ts.
     * @param {Uint8Array | string} message
     * @param {import('./index.js').Options} [options]
     * @returns {import('./index.js').Result}
     */
    classify(message, options = {}) {
        const bytes = bytesOf(message);
        const patterns = patternsOf(options.verp);
        const wanted = (options.trace ? wantsTrace : 0) + (options.data ? wantsData : 0);
        let wrong;
        try {
            const exports = this.#exports ??= instantiate(this.#module);
            wrong = patterns.find((pattern) => !this.#addVerp(exports, encoder.encode(pattern)));
            if (wrong === undefined) return this.#result(exports, bytes, wanted);
        } catch (cause) {
            this.#exports = null;  // what stopped in the middle is not used again
            throw new Error('the message could not be classified', { cause });
        } finally {
            this.#tidy();
        }
        throw new RangeError(`"${wrong}" is no form of an address with {local} and {domain}, ` +
            'or {tag}');
    }

    /** @param {Exports} exports @param {Uint8Array} bytes */
    #write(exports, bytes) {
        const room = exports.bouncecheck_room(bytes.length) >>> 0;
        new Uint8Array(exports.memory.buffer, room, bytes.length).set(bytes);
    }

    /** @param {Exports} exports @param {Uint8Array} pattern */
    #addVerp(exports, pattern) {
        this.#write(exports, pattern);
        return exports.bouncecheck_add_verp() !== 0;
    }

    /** @param {Exports} exports @param {Uint8Array} bytes @param {number} wanted */
    #result(exports, bytes, wanted) {
        this.#write(exports, bytes);
        const size = exports.bouncecheck_classify(wanted) >>> 0;
        const at = exports.bouncecheck_result() >>> 0;
        return JSON.parse(utf8.decode(new Uint8Array(exports.memory.buffer, at, size)));
    }

    #tidy() {
        if (!this.#exports) return;
        if (this.#exports.memory.buffer.byteLength > keptMemory) {
            this.#exports = null;
        } else {
            this.#exports.bouncecheck_free();
        }
    }
}
