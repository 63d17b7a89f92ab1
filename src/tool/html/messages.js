// The messages of the data blocks: columns at once, details when they are asked for.

const help = parsed(dataBlocks("help")[0]);
const types = new Map(help.types.map((type) => [type.type, type]));
const typeName = (type) => types.get(type).name;

/** The numbers of the first message of each block. */
const blockStarts = [];
const rows = readRows();
const rowCount = rows.type.length;

function readRows() {
    const all = { type: [], date: [], label: [], address: [], subject: [], from: [], place: [] };
    for (const block of dataBlocks("rows")) {
        const { texts, type, date, ...textColumns } = parsed(block);
        blockStarts.push(all.type.length);
        all.type.push(...type);
        all.date.push(...date);
        for (const [name, column] of Object.entries(textColumns)) {
            for (const text of column) all[name].push(texts[text]);
        }
        block.remove();
    }
    return all;
}

const detailBlocks = dataBlocks("details");
let lastBlock = { at: -1 };

function detailOf(row) {
    const at = blockStarts.findLastIndex((start) => start <= row);
    if (lastBlock.at !== at) lastBlock = { at, ...parsed(detailBlocks[at]) };
    const { texts, shapes, messages } = lastBlock;
    return { texts, shapes, ...messages[row - blockStarts[at]] };
}

/** "2008-09-18 17:54", in UTC; "" without a date. */
function dateText(seconds) {
    if (seconds === null) return "";
    return new Date(seconds * 1000).toISOString().slice(0, 16).replace("T", " ");
}

/** What is behind the last "@", without what mail leaves there. */
function domainOf(address) {
    const behind = address.slice(address.lastIndexOf("@") + 1 || address.length);
    return behind.match(/^[^\s<>()[\],;:"'/\\]*/)[0].toLowerCase();
}

const dateTexts = rows.date.map(dateText);
const domains = rows.address.map(domainOf);
