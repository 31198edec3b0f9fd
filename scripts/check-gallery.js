// Looks at the gallery in the frames of scripts/check-gallery, by look.js.

const findings = new Set();
const scheme = matchMedia("(prefers-color-scheme: dark)").matches ? "dark" : "light";
let seen = 0;

async function lookAtAll() {
    for (const frame of document.querySelectorAll("iframe")) {
        const page = frame.contentDocument;
        for (const details of page.querySelectorAll("details")) details.open = true;
        for (const button of page.querySelectorAll("input[name=language]")) {
            button.checked = true;
            await loaded([...page.images].filter(image => image.checkVisibility()));
            const { faults, seen: count } = faultsOf(page, scheme);
            seen += count;
            for (const fault of faults) findings.add(`${scheme}, ${frame.clientWidth} pixels, ${button.id}: ${fault}`);
        }
    }
    findings.add(`${scheme}: seen ${seen} elements`);
    document.getElementById("findings").textContent = [...findings].join("\n");
}

addEventListener("load", lookAtAll);
