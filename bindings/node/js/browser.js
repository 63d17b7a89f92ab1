// For browsers, which compile a module of this size only while they do other things.

import { Engine } from './engine.js';

/** @type {Promise<Engine> | undefined} */
let loading;
/** @type {Engine | undefined} */
let engine;

/** @param {import('./browser.js').Source} source */
async function compile(source) {
    if (source instanceof WebAssembly.Module) return source;
    if (source instanceof ArrayBuffer || ArrayBuffer.isView(source)) {
        return WebAssembly.compile(/** @type {BufferSource} */ (source));
    }
    const response = source instanceof Response ? source : await fetch(source);
    if (!response.ok) {
        throw new Error(`${response.url} cannot be loaded: status ${response.status}`);
    }
    // Only what is served as this type can be compiled while it arrives.
    return response.headers.get('Content-Type') === 'application/wasm'
        ? WebAssembly.compileStreaming(response)
        : WebAssembly.compile(await response.arrayBuffer());
}

/** @type {typeof import('./browser.js').init} */
export async function init(source = new URL('bouncecheck.wasm', import.meta.url)) {
    loading ??= compile(source).then((module) => new Engine(module));
    try {
        engine = await loading;
    } catch (error) {
        loading = undefined;  // the next call tries again
        throw error;
    }
}

/** @type {typeof import('./index.js').classify} */
export function classify(message, options) {
    if (!engine) throw new Error('call and await init() before classify()');
    return engine.classify(message, options);
}
