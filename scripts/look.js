// What isn't fit to be seen on a page, for scripts that look at pages in a browser.

function channels(color) {
    const numbers = color.match(/[\d.]+/g).map(Number);
    return { rgb: numbers.slice(0, 3), alpha: numbers.length > 3 ? numbers[3] : 1 };
}

// Relative luminance and contrast as WCAG 2 has them.
function luminance(rgb) {
    const [r, g, b] = rgb.map(c => c / 255).map(c => (c <= 0.04045 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4));
    return 0.2126 * r + 0.7152 * g + 0.0722 * b;
}

function contrast(one, other) {
    const [low, high] = [luminance(one), luminance(other)].sort((a, b) => a - b);
    return (high + 0.05) / (low + 0.05);
}

// The nearest ground below an element; grounds of the page are whole.
function groundOf(element) {
    for (let at = element; at; at = at.parentElement) {
        const { rgb, alpha } = channels(getComputedStyle(at).backgroundColor);
        if (alpha === 1) return rgb;
    }
    return [255, 255, 255];
}

const ownText = element => [...element.childNodes].some(node => node.nodeType === 3 && node.textContent.trim());
const named = element => `<${element.localName}> ${(element.alt || element.textContent).trim().slice(0, 40)}`;

// Boxes that scroll may hold what is wider than they are.
const scrolls = element => element && (/auto|scroll/.test(getComputedStyle(element).overflowX) || scrolls(element.parentElement));

// The faults of a document as it stands in its window, a line each, and how many elements were looked at.
function faultsOf(page, scheme) {
    const faults = new Set();
    const root = page.documentElement;
    let seen = 0;
    if (page.defaultView.matchMedia("(prefers-color-scheme: dark)").matches !== (scheme === "dark"))
        faults.add("the page stands in the other scheme");
    if (root.scrollWidth > root.clientWidth) faults.add(`${root.scrollWidth} pixels wide`);
    for (const element of page.body.querySelectorAll("*")) {
        if (!element.checkVisibility({ checkOpacity: true }) || element.closest("figure > svg, .table")) continue;
        ++seen;
        const { left, right } = element.getBoundingClientRect();
        if ((left < 0 || right > root.clientWidth + 0.5) && !scrolls(element.parentElement)) faults.add(`beyond the window: ${named(element)}`);
        if (element.scrollWidth > element.clientWidth && getComputedStyle(element).overflowX === "hidden")
            faults.add(`cut: ${named(element)}`);
        if (element.localName === "img" && element.naturalWidth === 0) faults.add(`no picture: ${element.getAttribute("src")}`);
        if (!ownText(element)) continue;
        const ratio = contrast(channels(getComputedStyle(element).color).rgb, groundOf(element));
        if (ratio < 4.5) faults.add(`contrast ${ratio.toFixed(1)}: ${named(element)}`);
    }
    return { faults: [...faults], seen };
}

const loaded = images => Promise.all([...images].map(image => {
    image.loading = "eager";
    return image.decode().catch(() => {});
}));
