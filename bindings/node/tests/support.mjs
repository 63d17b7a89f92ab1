import { readdirSync } from 'node:fs';
import { join } from 'node:path';

export const root = process.env.BOUNCECHECK_ROOT;

/** The paths of all samples. */
export const samples = readdirSync(join(root, 'samples'))
    .filter((name) => name.endsWith('.eml'))
    .map((name) => join(root, 'samples', name));
