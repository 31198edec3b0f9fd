// Search and copying, for the pages of scripts/docs. Without it the pages read as well; both are added here alone.

"use strict";

const root = document.currentScript.dataset.root;

function element(name, properties = {}, ...children) {
    const made = Object.assign(document.createElement(name), properties);
    made.append(...children);
    return made;
}

// Searching: each entry of the index is a section of a page, [page, heading, address, text].

// How much a word is worth that stands in a text, by itself or in a longer one.
function worth(word, text, alone, within) {
    const at = text.indexOf(word);
    if (at < 0) return 0;
    const found = new RegExp(`(^|[^a-z0-9_])${word.replace(/[.*+?^${}()|[\]\\]/g, "\\$&")}($|[^a-z0-9_])`);
    return found.test(text) ? alone : within;
}

// How well a section answers the words; 0 if it lacks one of them.
function score([page, heading, , text], words) {
    const [ofPage, ofHeading, ofText] = [page, heading, text].map(part => part.toLowerCase());
    let sum = 0;
    for (const word of words) {
        const value = (ofHeading === word ? 30 : 0) + worth(word, ofHeading, 14, 5) + worth(word, ofPage, 8, 3) + worth(word, ofText, 6, 1);
        if (value === 0) return 0;
        sum += value;
    }
    return sum;
}

function excerpt(text, words) {
    const at = Math.max(0, Math.min(...words.map(word => text.toLowerCase().indexOf(word)).filter(at => at >= 0), text.length) - 40);
    return at >= text.length - 40 ? text.slice(0, 120) : (at > 0 ? "… " : "") + text.slice(at, at + 120);
}

function found(words) {
    return window.searchIndex.map(entry => [score(entry, words), entry]).filter(([value]) => value > 0)
        .sort(([one], [other]) => other - one).slice(0, 12).map(([, entry]) => entry);
}

function show(list, query) {
    const words = query.toLowerCase().split(/\s+/).filter(Boolean);
    list.hidden = words.length === 0;
    const rows = list.hidden ? [] : found(words).map(([page, heading, address, text]) => element("li", {},
        element("a", { href: root + address }, heading === page ? page : `${page}: ${heading}`,
            element("span", { textContent: excerpt(text, words) }))));
    list.replaceChildren(...(rows.length || list.hidden ? rows : [element("li", { className: "none", textContent: "Nothing found" })]));
}

// The index is fetched when somebody begins to search. A file beside the page can't be read, but run as a script.
function loadIndex(then) {
    if (window.searchIndex) return then();
    document.head.append(element("script", { src: `${root}search-index.js`, onload: then }));
}

function addSearch() {
    const list = element("ul", { hidden: true });
    const input = element("input", { type: "search", placeholder: "Search ( / )", ariaLabel: "Search in the pages" });
    const box = element("div", { className: "search", role: "search" }, input, list);
    const links = () => [...list.querySelectorAll("a")];
    input.addEventListener("input", () => loadIndex(() => show(list, input.value)));
    box.addEventListener("keydown", event => {
        const steps = { ArrowDown: 1, ArrowUp: -1 };
        const order = [input, ...links()];
        if (event.key in steps) order[order.indexOf(document.activeElement) + steps[event.key]]?.focus();
        else if (event.key === "Enter" && document.activeElement === input) links()[0]?.click();
        else if (event.key === "Escape") list.hidden = true;
        else return;
        event.preventDefault();
    });
    box.addEventListener("focusout", event => { if (!box.contains(event.relatedTarget)) list.hidden = true; });
    input.addEventListener("focus", () => { list.hidden = !list.hasChildNodes(); });
    addEventListener("keydown", event => {
        if (event.key !== "/" || /input|textarea/i.test(document.activeElement.localName)) return;
        input.focus();
        event.preventDefault();
    });
    document.querySelector("header").append(box);
}

// Where there is no clipboard the text is selected, to be copied by hand.
async function copy(pre, button) {
    try {
        await navigator.clipboard.writeText(pre.textContent);
        button.textContent = "Copied";
        setTimeout(() => { button.textContent = "Copy"; }, 1500);
    } catch {
        getSelection().selectAllChildren(pre);
    }
}

addSearch();
for (const pre of document.querySelectorAll(".code pre")) {
    const button = element("button", { type: "button", textContent: "Copy" });
    button.addEventListener("click", () => copy(pre, button));
    pre.parentElement.append(button);
}
