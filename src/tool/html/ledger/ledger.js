// The addresses of the data blocks: columns at once, details when they are asked for. What the
// ledger reports from day to day stands in a block of its own.

const help = parsed(dataBlocks("help")[0]);
const development = parsed(dataBlocks("development")[0]);

/** The numbers of the first row of each block. */
const blockStarts = [];
const rows = readRows();
const rowCount = rows.address.length;

function readRows() {
    const textColumns = ["address", "cause", "reason", "evidence"];
    const numberColumns = ["since", "first", "last", "count", "changed"];
    const all = Object.fromEntries([...textColumns, ...numberColumns].map((name) => [name, []]));
    for (const block of dataBlocks("rows")) {
        const { texts, ...columns } = parsed(block);
        blockStarts.push(all.address.length);
        for (const name of textColumns) {
            for (const text of columns[name]) all[name].push(texts[text]);
        }
        for (const name of numberColumns) {
            for (const value of columns[name]) all[name].push(value);
        }
        block.remove();
    }
    return all;
}

const detailBlocks = dataBlocks("details");
let lastBlock = { at: -1 };

/** Texts of the report that a row is suppressed for. */
function detailOf(row) {
    const at = blockStarts.findLastIndex((start) => start <= row);
    if (lastBlock.at !== at) lastBlock = { at, ...parsed(detailBlocks[at]) };
    const texts = lastBlock.rows[row - blockStarts[at]].map((text) => lastBlock.texts[text]);
    const [outcome, status, replyCode, diagnostic, place, messageId] = texts;
    return { outcome, status, replyCode, diagnostic, place, messageId };
}

const sinceTexts = rows.since.map(dateText);
const firstTexts = rows.first.map(dateText);
const lastTexts = rows.last.map(dateText);
const domains = rows.address.map(domainOf);
