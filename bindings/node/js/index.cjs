'use strict';
// For Node. The module is read from beside this file, once, when it is first used.

const fs = require('node:fs');
const path = require('node:path');
const { Engine } = require('./engine.cjs');

const file = path.join(__dirname, 'bouncecheck.wasm');
/** @type {InstanceType<typeof Engine> | undefined} */
let engine;

exports.init = async function init() {
    if (engine) return;
    const bytes = /** @type {BufferSource} */ (await fs.promises.readFile(file));
    const module = await WebAssembly.compile(bytes);
    engine ??= new Engine(module);
};

/** @type {typeof import('./index.cjs').classify} */
exports.classify = function classify(message, options) {
    if (!engine) {
        const bytes = /** @type {BufferSource} */ (fs.readFileSync(file));
        engine = new Engine(new WebAssembly.Module(bytes));
    }
    return engine.classify(message, options);
};
