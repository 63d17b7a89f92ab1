// The language of the search: words, which all have to be found, and "name:value". A minus in
// front of either excludes what it finds. Quotes around a value keep blanks and commas, and ""
// within them is one quote.

const orNone = (text) => text || "none";
const isEqual = (text, value) => text === value;
const beginsWith = (text, value) => text.startsWith(value);
const contains = (text, value) => text.includes(value);
/** A date and its hour may have a blank or a "T" between. */
const isDateWithin = (text, value) => text.startsWith(value.replace("t", " "));
/** "5.1" finds "5.1.1", but "5.1.1" does not find "5.1.10". */
const isCodeWithin = (text, value) => text === value || text.startsWith(`${value}.`);

const quoted = /"((?:[^"]+|"")*)"?/.source;
const pieceOf = new RegExp(`-?(?:[a-z]+:)?(?:${quoted}|\\S)(?:,${quoted}|\\S)*`, "gi");
const choiceOf = new RegExp(`${quoted}[^,]*|[^,]+`, "g");
const quotedFirst = new RegExp(`^${quoted}`);

const withoutQuotes = (text) =>
    text.replace(quotedFirst, (whole, inner) => inner.replaceAll('""', '"'));
const withQuotes = (value) =>
    /^"|[\s,]/.test(value) ? `"${value.replaceAll('"', '""')}"` : value;

/** Terms of a search: their text, and the parts of it. */
function parseSearch(search) {
    const pieces = search.match(pieceOf) ?? [];
    return pieces.map((text) => {
        const [, minus, prefix, rest] = text.toLowerCase().match(/^(-?)([a-z]+:)?(.*)$/s);
        const name = prefix?.slice(0, -1);
        const isNamed = Object.hasOwn(searchNames, name ?? "");
        const isSplit = isNamed && searchNames[name].isChoice;
        const given = isSplit
            ? (rest.match(choiceOf) ?? []).map(withoutQuotes)
            : [(isNamed ? "" : (prefix ?? "")) + withoutQuotes(rest)];
        const values = given.filter(Boolean);
        return { text, excludes: minus === "-", name: isNamed ? name : "", values };
    });
}

/** What words are looked for in, a text a row; made with the first search. */
let searchedTexts;

function textOf(row) {
    searchedTexts ??= Array.from({ length: rowCount }, (_, at) => wordsOf(at).toLowerCase());
    return searchedTexts[row];
}

/** Whether a row has what a term asks for. */
function testOf({ excludes, name, values }) {
    const { of, holds } = searchNames[name] ?? { of: (row) => [textOf(row)], holds: contains };
    const hasValue = (text) => {
        const lower = text.toLowerCase();
        return values.some((value) => holds(lower, value));
    };
    return (row) => of(row).some(hasValue) !== excludes;
}

/** The terms of a search that exclude or find something. */
const termsOf = (search) => parseSearch(search).filter(({ values }) => values.length > 0);

/** The values that a search asks for by a name. */
function valuesAsked(search, name) {
    const terms = termsOf(search).filter((term) => term.name === name && !term.excludes);
    return new Set(terms.flatMap(({ values }) => values));
}

/** The search with other values for a name, behind its other terms. */
function withValues(search, name, values) {
    const others = parseSearch(search).filter((term) => term.name !== name || term.excludes);
    const texts = others.map(({ text }) => text);
    if (values.length > 0) texts.push(`${name}:${values.map(withQuotes).join(",")}`);
    return texts.join(" ");
}
