// The programs of docs/javascript.md print what it shows.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';

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
