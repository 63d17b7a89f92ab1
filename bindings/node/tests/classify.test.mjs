import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { test } from 'node:test';
import { runInNewContext } from 'node:vm';

import { classify, init } from 'bouncecheck';
import { samples } from './support.mjs';

const bounce = 'From: MAILER-DAEMON@mx.example.org\nSubject: Undelivered Mail Returned to Sender\n' +
    '\n<lena@example.org>: host mx.example.org said: 552 5.2.2 mailbox is full\n';

test('one function for both kinds of modules', async () => {
    await init();
    assert.equal(createRequire(import.meta.url)('bouncecheck').classify, classify);
});

test('strings are their UTF-8, and bytes may be part of a buffer or of another realm', () => {
    const bytes = Buffer.from(`....${bounce}....`);
    const result = classify(bounce);
    assert.equal(result.name, 'hard');
    assert.equal(result.recipients[0].reason, 'mailbox-full');
    assert.deepEqual(classify(bytes.subarray(4, -4)), result);
    const foreign = runInNewContext('Uint8Array.from(bytes)', { bytes: [...Buffer.from(bounce)] });
    assert.deepEqual(classify(foreign), result);
});

test('a pattern counts for one call', () => {
    const returned = `To: bounces-4711@example.org\n${bounce}`;
    const tagOf = (options) => classify(returned, options).recipients[0].tag;
    assert.equal(tagOf({ verp: 'bounces-{tag}@example.org' }), '4711');
    assert.equal(tagOf(), undefined);
});

test('wrong arguments are errors, and leave nothing behind', () => {
    for (const [args, kind] of [
        [[], TypeError],
        [[null], TypeError],
        [[[1, 2]], TypeError],
        [[new Uint16Array(2)], TypeError],
        [['', { verp: 1 }], TypeError],
        [['', { verp: ['b-{tag}@example.org', null] }], TypeError],
        [['', { verp: 'lists@example.org' }], RangeError],
        [['', { verp: ['b-{tag}@example.org', '{local}'] }], RangeError],
    ]) {
        assert.throws(() => classify(...args), kind);
    }
    assert.equal(classify(`To: b-1@example.org\n${bounce}`).recipients[0].tag, undefined);
});

test('charsets are read by the host, and left where it has none', () => {
    const subjectOf = (charset, bytes) => classify(Buffer.concat([
        Buffer.from('Content-Type: multipart/report; boundary=b\n\n--b\n' +
            'Content-Type: message/rfc822\n\n' +
            `Subject: =?${charset}?B?${Buffer.from(bytes, 'latin1').toString('base64')}?=\n\nText\n`),
    ])).returned.subject;
    for (const [charset, bytes, subject] of [
        ['iso-2022-jp', '\x1b$B%F%9%H\x1b(B', 'テスト'],
        ['shift_jis', '\x83e\x83X\x83g', 'テスト'],
        ['cp932', '\x83e\x83X\x83g', 'テスト'],
        ['ks_c_5601-1987', '\xbe\xc8', '안'],
        ['koi8-r', '\xd4\xc5\xd3\xd4', 'тест'],
        ['utf-16le', 't\0\xe9\0', 'té'],
        ['big5', '\xa4', '\uFFFD'],  // ends within a character
        ['utf-7', 'a+AOk-', 'a+AOk-'],
        ['no-such-charset', 'abc', 'abc'],
    ]) {
        assert.equal(subjectOf(charset, bytes), subject, charset);
    }
});

/** Bytes that follow no pattern, the same in each run. */
function noise(size) {
    const bytes = new Uint8Array(size);
    let state = 1;
    for (let i = 0; i < size; ++i) {
        state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
        bytes[i] = state >>> 24;
    }
    return bytes;
}

const count = (n, make) => Array.from({ length: n }, (_, i) => make(i)).join('');
const hostile = {
    'nothing': '',
    'NUL bytes': new Uint8Array(1 << 20),
    'noise': noise(1 << 20),
    'noise in a text of Japanese': Buffer.concat(
        [Buffer.from('Content-Type: text/plain; charset=iso-2022-jp\n\n'), noise(1 << 20)]),
    'multiparts in each other': count(20000, (i) =>
        `Content-Type: multipart/mixed; boundary=b${i}\n\n--b${i}\n`),
    'messages in each other': count(20000, () => 'Content-Type: message/rfc822\n\n'),
    'many parts': 'Content-Type: multipart/mixed; boundary=b\n\n' + count(50000, () => '--b\n\nx\n'),
    'many fields': count(200000, (i) => `X-${i}: a\n`),
    'comments in an address': `From: ${'('.repeat(1 << 20)}\n\n`,
    'encoded words': `Subject: ${'=?utf-8?B?'.repeat(1 << 17)}\n\n`,
    'elements in each other': `Content-Type: text/html\n\n${'<div>'.repeat(1 << 18)}`,
    'recipients': 'Content-Type: message/delivery-status\n\n' +
        count(50000, (i) => `Final-Recipient: rfc822; u${i}@example.org\nAction: failed\n\n`),
};
for (const [what, message] of Object.entries(hostile)) {
    test(`hostile: ${what}`, { timeout: 60000 }, () => {
        assert.equal(typeof classify(message, { trace: true, data: true }).name, 'string');
    });
}

test('after a message that no memory is there for, the next is classified', () => {
    class Endless extends Uint8Array {
        get length() { return 4e9; }
    }
    assert.throws(() => classify(new Endless()), /could not be classified/);
    assert.equal(classify(bounce).name, 'hard');
});

test('memory stays over 20,000 messages', { timeout: 300000 }, () => {
    const messages = samples.map((path) => readFileSync(path));
    const run = (from, to) => {
        for (let i = from; i < to; ++i) classify(messages[i % messages.length], { trace: true });
        return process.memoryUsage().rss;
    };
    const before = run(0, 4000);
    const after = run(4000, 20000);
    assert.ok(after - before < 16e6, `${before} bytes became ${after}`);
});
