// The package gives what the command prints.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';

import { classify } from 'bouncecheck';
import { samples } from './support.mjs';

const tool = process.env.BOUNCECHECK_TOOL;
const skip = tool ? false : 'BOUNCECHECK_TOOL names no command to compare with';

function printed(options) {
    const out = execFileSync(tool, ['--format', 'json', '--single', ...options, ...samples],
        { encoding: 'utf8', maxBuffer: 1 << 28 });
    return out.trimEnd().split('\n').map((line) => {
        const { source, index, ...result } = JSON.parse(line);
        return [source, result];
    });
}

const verp = ['newsletter-{tag}@shop.example', '{local}@{domain}'];  // the second takes any address
const cases = [
    ['results', [], {}],
    ['traces and texts', ['--trace', '--data'], { trace: true, data: true }],
    ['VERP addresses', verp.flatMap((pattern) => ['--verp', pattern]), { verp }],
];
for (const [what, ofTool, options] of cases) {
    test(`the same ${what} for all samples`, { skip }, () => {
        const all = printed(ofTool);
        assert.equal(all.length, samples.length);
        for (const [source, result] of all) {
            assert.deepEqual(classify(readFileSync(source), options), result, source);
        }
    });
}
