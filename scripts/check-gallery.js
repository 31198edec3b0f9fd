// Looks at the gallery in the frames of scripts/check-gallery.

const findings = new Set();
const scheme = matchMedia("(prefers-color-scheme: dark)").matches ? "dark" : "light";
let seen = 0;

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

function lookAt(frame, language) {
    const page = frame.contentDocument;
    const tell = text => findings.add(`${scheme}, ${frame.clientWidth} pixels, ${language}: ${text}`);
    const root = page.documentElement;
    if (frame.contentWindow.matchMedia("(prefers-color-scheme: dark)").matches !== (scheme === "dark"))
        tell("the page stands in the other scheme");
    if (root.scrollWidth > root.clientWidth) tell(`${root.scrollWidth} pixels wide`);
    for (const element of page.body.querySelectorAll("*")) {
        if (!element.checkVisibility({ checkOpacity: true }) || element.closest("figure > svg, .table")) continue;
        ++seen;
        const { left, right } = element.getBoundingClientRect();
        if (left < 0 || right > root.clientWidth + 0.5) tell(`beyond the window: ${named(element)}`);
        if (element.scrollWidth > element.clientWidth && getComputedStyle(element).overflowX === "hidden")
            tell(`cut: ${named(element)}`);
        if (element.localName === "img" && element.naturalWidth === 0) tell(`no picture: ${element.getAttribute("src")}`);
        if (!ownText(element)) continue;
        const ratio = contrast(channels(getComputedStyle(element).color).rgb, groundOf(element));
        if (ratio < 4.5) tell(`contrast ${ratio.toFixed(1)}: ${named(element)}`);
    }
}

const loaded = images => Promise.all([...images].map(image => {
    image.loading = "eager";
    return image.decode().catch(() => {});
}));

async function lookAtAll() {
    for (const frame of document.querySelectorAll("iframe")) {
        const page = frame.contentDocument;
        for (const details of page.querySelectorAll("details")) details.open = true;
        for (const button of page.querySelectorAll("input[name=language]")) {
            button.checked = true;
            await loaded([...page.images].filter(image => image.checkVisibility()));
            lookAt(frame, button.id);
        }
    }
    findings.add(`${scheme}: seen ${seen} elements`);
    document.getElementById("findings").textContent = [...findings].join("\n");
}

addEventListener("load", lookAtAll);
