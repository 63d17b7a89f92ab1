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
