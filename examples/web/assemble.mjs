// Puts the page together in a folder:
//
//     node assemble.mjs bouncecheck_web.wasm FOLDER
//
// Everything but what installs it is in one file, whose policy names its script and its style by
// their hashes, and those of the report that it shows.

import { createHash } from 'node:crypto';
import { mkdirSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { gzipSync } from 'node:zlib';

const [wasm, folder] = process.argv.slice(2);
const here = fileURLToPath(new URL('.', import.meta.url));
const root = join(here, '../..');
const read = (...path) => readFileSync(join(...path), 'utf8');

/** The report of no message, as the module writes it. */
function emptyReport(module) {
    let text = '';
    let exports;
    const absent = new Proxy({}, { get: () => () => 0 });
    const write = (at, size) => {
        text += Buffer.from(exports.memory.buffer, at >>> 0, size >>> 0).toString();
    };
    const host = new Proxy({ write }, { get: (own, name) => own[name] ?? absent[name] });
    const imports = { host, wasi_snapshot_preview1: absent };
    exports = new WebAssembly.Instance(new WebAssembly.Module(module), imports).exports;
    exports._initialize();
    exports.page_begin();
    exports.page_finish();
    return text;
}

const hashOf = (text) => `'sha256-${createHash('sha256').update(text).digest('base64')}'`;

function hashInPolicy(report, name) {
    const [, hash] = report.match(new RegExp(`${name} ('sha256-[^']+')`)) ?? [];
    if (!hash) throw new Error(`the report has no hash of its ${name}`);
    return hash;
}

const module = readFileSync(wasm);
const report = emptyReport(module);
const style = read(root, 'src/tool/html/page.css') + read(here, 'page/page.css');
const script = read(here, 'page/page.js');
// A worker that is no module starts from any address; it takes the engine's functions as its own.
const engine = read(root, 'bindings/node/js/engine.js').replace(/^export (?=class )/m, '');
const worker = engine + read(here, 'page/worker.js');
for (const text of [style, script, worker]) {
    if (/<\/|<!--/.test(text)) throw new Error('style and scripts must not hold </ or <!--');
}

const parts = {
    'script-hashes': `${hashOf(script)} ${hashInPolicy(report, 'script-src')}`,
    'style-hashes': `${hashOf(style)} ${hashInPolicy(report, 'style-src')}`,
    icon: readFileSync(join(here, 'page/icon.svg')).toString('base64'),
    style,
    script,
    worker,
    module: gzipSync(module, { level: 9 }).toString('base64'),
};
/** The text of a file, its {{names}} replaced by the parts. */
const filled = (name) => read(here, 'page', name).replaceAll(/{{([a-z-]+)}}/g, (whole, part) => {
    if (!(part in parts)) throw new Error(`${name} wants ${whole}, which there is not`);
    return parts[part];
});

rmSync(folder, { recursive: true, force: true });
mkdirSync(folder, { recursive: true });
parts.version = createHash('sha256').update(filled('index.html')).digest('hex').slice(0, 12);
for (const name of ['index.html', 'manifest.webmanifest', 'service-worker.js']) {
    writeFileSync(join(folder, name), filled(name));
}
