// Makes parts of the document. Whatever comes from mail is put into it as text, never as markup,
// and never into an attribute that acts.

const find = (id) => document.getElementById(id);
const dataBlocks = (name) => [...document.querySelectorAll(`script.${name}`)];
const parsed = (block) => JSON.parse(block.textContent);
const number = (value) => value.toLocaleString("en");
const percent = (part, whole) => `${((100 * part) / whole).toFixed(1)}\u00a0%`;
const counted = (count, one, many = `${one}s`) =>
    `${number(count)}\u00a0${count === 1 ? one : many}`;

/** Sets attributes and appends children; a string becomes a text node. */
function filled(element, attributes, children) {
    for (const [name, value] of Object.entries(attributes)) {
        if (value !== undefined) element.setAttribute(name, value);
    }
    element.append(...children);
    return element;
}

function make(name, attributes = {}, ...children) {
    return filled(document.createElement(name), attributes, children);
}

function svg(name, attributes = {}, ...children) {
    const space = "http://www.w3.org/2000/svg";
    return filled(document.createElementNS(space, name), attributes, children);
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

/** Facts of what a row unfolds to: pairs of a name and what there is to say, if anything. */
function factList(facts) {
    const list = make("dl");
    for (const [name, value] of facts) {
        if (value) list.append(make("dt", {}, name), make("dd", {}, ...[value].flat()));
    }
    return list;
}

function titled(title, content) {
    return make("div", {}, make("h3", {}, title), content);
}
