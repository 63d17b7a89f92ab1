// What tsc has to accept, and what not.
import { classify, init, type Recipient, type Result } from 'bouncecheck';
import * as browser from 'bouncecheck/browser';

await init();
const result: Result = classify(new Uint8Array(), { verp: 'b-{tag}@example.org', trace: true });
const failed: Recipient[] = result.recipients.filter(({ outcome }) => outcome === 'failed');
const words: string | undefined = failed[0]?.evidence.quote;
const number: number = classify('', { verp: ['b-{tag}@example.org'] }).type;
for (const step of result.trace ?? []) {
    if ('tag' in step) console.log(step.tag, step.value);
}
await browser.init(new URL('https://example.org/bouncecheck.wasm'));
const same: Result = browser.classify('');
console.log(words, number, same);

// @ts-expect-error a message is no number
classify(1);
// @ts-expect-error there is no such option
classify('', { verps: 'b-{tag}@example.org' });
// @ts-expect-error there is no such outcome
failed.filter(({ outcome }) => outcome === 'bounced');
// @ts-expect-error in Node there is nothing to load from elsewhere
await init('bouncecheck.wasm');
