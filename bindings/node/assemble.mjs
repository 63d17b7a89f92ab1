// Puts the npm package together in a folder:
//
//     node assemble.mjs bouncecheck.wasm FOLDER
//
// CommonJS gets a copy of what is written as ES modules.

import { copyFileSync, mkdirSync, readdirSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';

const [wasm, folder] = process.argv.slice(2);
const here = fileURLToPath(new URL('.', import.meta.url));
const root = join(here, '../..');

const { version } = JSON.parse(readFileSync(join(here, 'package.json'), 'utf8'));
const project = readFileSync(join(root, 'CMakeLists.txt'), 'utf8');
if (!project.includes(`VERSION ${version}\n`)) {
    throw new Error(`package.json has the version ${version}, which is not that of the project`);
}

rmSync(folder, { recursive: true, force: true });
mkdirSync(folder, { recursive: true });
for (const file of readdirSync(join(here, 'js'))) {
    copyFileSync(join(here, 'js', file), join(folder, file));
}
copyFileSync(join(here, 'package.json'), join(folder, 'package.json'));
copyFileSync(join(root, 'LICENSE'), join(folder, 'LICENSE'));
copyFileSync(join(root, 'docs/javascript.md'), join(folder, 'README.md'));
copyFileSync(wasm, join(folder, 'bouncecheck.wasm'));
copyFileSync(join(here, 'js/index.d.ts'), join(folder, 'index.d.cts'));

const engine = readFileSync(join(here, 'js/engine.js'), 'utf8')
    .replaceAll('./index.js', './index.cjs');
const pieces = engine.split(/^export (?=class Engine )/m);
if (pieces.length !== 2) throw new Error('engine.js exports something else than Engine');
writeFileSync(join(folder, 'engine.cjs'),
    `'use strict';\n${pieces.join('')}\nmodule.exports = { Engine };\n`);
