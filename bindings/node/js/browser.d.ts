export * from './index.js';

/** What the module, bouncecheck.wasm, is loaded from. */
export type Source = string | URL | Response | BufferSource | WebAssembly.Module;

/**
 * Loads the classifier; await it before the first `classify`, which throws an Error otherwise.
 * Without `source` it is fetched from beside browser.js. Where that fails, the promise is
 * rejected, and a later call tries again; when it is loaded, a call does nothing.
 */
export function init(source?: Source): Promise<void>;
