// The messages of the data blocks: columns at once, details when they are asked for.

const help = parsed(dataBlocks("help")[0]);
const types = new Map(help.types.map((type) => [type.type, type]));
const typeName = (type) => types.get(type).name;

/** What is the same in all rows of a message, beside its type and date. */
const messageColumns = ["label", "address", "subject", "from", "place"];
/** What differs: a row stands for a recipient, or for a message that names none. */
const recipientColumns = [
    "recipient",
    "final",
    "outcome",
    "reason",
    "advice",
    "status",
    "diagnostic",
    "quote",
];

/** The numbers of the first message of each block. */
const blockStarts = [];
/** The number of the first row of each message. */
const firstRows = [];
const rows = readRows();
const rowCount = rows.message.length;
const messageCount = firstRows.length;

function readRows() {
    const names = ["message", "type", "date", ...messageColumns, ...recipientColumns];
    const all = Object.fromEntries(names.map((name) => [name, []]));
    for (const block of dataBlocks("rows")) {
        const { texts, rows: counts, type, date, ...columns } = parsed(block);
        const start = firstRows.length;
        blockStarts.push(start);
        counts.forEach((count, message) => {
            firstRows.push(all.message.length);
            for (let i = 0; i < count; i += 1) {
                all.message.push(start + message);
                all.type.push(type[message]);
                all.date.push(date[message]);
                for (const name of messageColumns) all[name].push(texts[columns[name][message]]);
            }
        });
        for (const name of recipientColumns) {
            for (const text of columns[name]) all[name].push(texts[text]);
        }
        block.remove();
    }
    return all;
}

/** The rows of the message that a row belongs to. */
function rowsBeside(row) {
    const message = rows.message[row];
    const end = firstRows[message + 1] ?? rowCount;
    return Array.from({ length: end - firstRows[message] }, (_, i) => firstRows[message] + i);
}

const detailBlocks = dataBlocks("details");
let lastBlock = { at: -1 };

function detailOf(row) {
    const message = rows.message[row];
    const at = blockStarts.findLastIndex((start) => start <= message);
    if (lastBlock.at !== at) lastBlock = { at, ...parsed(detailBlocks[at]) };
    const { texts, shapes, messages } = lastBlock;
    return { texts, shapes, ...messages[message - blockStarts[at]] };
}

/** What was said of a recipient, as far as it is known; else what the message is about. */
const replyOf = (row) => rows.diagnostic[row] || rows.quote[row] || rows.subject[row];

const dateTexts = rows.date.map(dateText);
const domains = rows.recipient.map(domainOf);
