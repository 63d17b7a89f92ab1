// The programs of docs/javascript.md print what it shows.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { dirname, join } from 'node:path';
import { test } from 'node:test';
import { gzipSync } from 'node:zlib';

import { root } from './support.mjs';

const page = readFileSync(join(root, 'docs/javascript.md'), 'utf8');
const programs = [...page.matchAll(/^```js\n(.*?)^```\n(?:\n|prints\n)*^```\n(.*?)^```$/gms)];

test('every program is shown with its output', () => {
    assert.equal(programs.length, page.match(/^```js$/gm).length);
});

for (const [, program, output] of programs) {
    test(`prints ${output.split('\n')[0]}`, () => {
        const type = program.includes('require(') ? 'commonjs' : 'module';
        const printed = execFileSync(process.execPath,
            [`--input-type=${type}`, '--eval', program], { encoding: 'utf8' });
        assert.equal(printed, output);
    });
}

test('the sizes that it tells are about those of the package', () => {
    const folder = dirname(createRequire(import.meta.url).resolve('bouncecheck'));
    const module = readFileSync(join(folder, 'bouncecheck.wasm'));
    const sizes = {
        'the module': module,
        'the module as `gzip -9` compresses it': gzipSync(module, { level: 9 }),
        'the package': readFileSync(join(root, 'build/node/bouncecheck.tgz')),
    };
    for (const [what, { length }] of Object.entries(sizes)) {
        const [, told] = page.match(new RegExp(`^\\| ${what} \\| (\\d+) KB \\|$`, 'm')) ?? [];
        assert.ok(Math.abs(told * 1000 / length - 1) < 0.1, `${what}: ${told} KB, is ${length}`);
    }
});
