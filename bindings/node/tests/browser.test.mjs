// What browsers load: over HTTP, first by Node, then in Chromium.
import assert from 'node:assert/strict';
import { execFile, execFileSync } from 'node:child_process';
import { existsSync, readFileSync } from 'node:fs';
import { createServer } from 'node:http';
import { createRequire } from 'node:module';
import { dirname, extname, join } from 'node:path';
import { after, before, test } from 'node:test';
import { promisify } from 'node:util';

import { classify as inNode } from 'bouncecheck';
import { classify, init } from 'bouncecheck/browser';
import { root } from './support.mjs';

const folder = dirname(createRequire(import.meta.url).resolve('bouncecheck'));
const shown = readFileSync(join(root, 'docs/javascript.md'), 'utf8').match(/```html\n(.*?)```/s)[1];
const sample = readFileSync(join(root, 'samples/japanese-report-iso-2022-jp.eml'));
// The page of the manual, which then does what a person would.
const page = `${shown}<script type="module">
    import { classify, init } from './browser.js';

    await init();
    const mail = Uint8Array.from(${JSON.stringify([...sample])});
    classify(mail);  // which leaves nothing behind
    document.title = JSON.stringify(classify(mail, { trace: true }));
</script>`;

const types = { '.js': 'text/javascript', '.wasm': 'application/wasm' };
const server = createServer(({ url }, response) => {
    const file = join(folder, url);
    if (url === '/page.html') {
        response.setHeader('Content-Type', 'text/html; charset=utf-8').end(page);
    } else if (url === '/untyped') {
        response.end(readFileSync(join(folder, 'bouncecheck.wasm')));
    } else if (types[extname(url)] && existsSync(file)) {
        response.setHeader('Content-Type', types[extname(url)]).end(readFileSync(file));
    } else {
        response.writeHead(404).end();
    }
});
let origin;
before(() => new Promise((resolve) => server.listen(0, '127.0.0.1', () => {
    origin = `http://127.0.0.1:${server.address().port}`;
    resolve();
})));
after(() => server.close());

test('init is needed, tells why it fails, and can be called again', async () => {
    assert.throws(() => classify(sample), /init/);
    await assert.rejects(init(`${origin}/absent.wasm`), /absent\.wasm.*404/);
    await init(`${origin}/bouncecheck.wasm`);
    assert.deepEqual(classify(sample), inNode(sample));
    await init(`${origin}/absent.wasm`);  // it is loaded already
});

test('every kind of source will do', async () => {
    const bytes = readFileSync(join(folder, 'bouncecheck.wasm'));
    const sources = [`${origin}/untyped`, new URL(`${origin}/bouncecheck.wasm`), bytes,
        Uint8Array.from(bytes).buffer, await fetch(`${origin}/bouncecheck.wasm`),
        new WebAssembly.Module(bytes)];
    for (const [i, source] of sources.entries()) {
        const fresh = await import(`${join(folder, 'browser.js')}?${i}`);
        await fresh.init(source);
        assert.equal(fresh.classify(sample).name, inNode(sample).name);
    }
});

const chromium = ['chromium', 'chromium-browser', 'google-chrome'].find((name) => {
    try {
        return execFileSync('which', [name]);
    } catch {
        return false;
    }
});
test('Chromium gives the same result', { skip: chromium ? false : 'no Chromium is installed' },
    async () => {
        const { stdout } = await promisify(execFile)(chromium, ['--headless', '--no-sandbox',
            '--disable-gpu', '--virtual-time-budget=20000', '--dump-dom', `${origin}/page.html`],
            { timeout: 120000 });
        assert.match(stdout, /<output>Choose a message\.<\/output>/);
        const title = stdout.match(/<title>(.*?)<\/title>/s)[1].replaceAll('&lt;', '<')
            .replaceAll('&gt;', '>').replaceAll('&amp;', '&');
        assert.deepEqual(JSON.parse(title), inNode(sample, { trace: true }));
    });
