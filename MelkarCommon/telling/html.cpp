#include <MelkarCommon/telling/html.h>

#include <MelkarCommon/telling/speech.h>
#include <MelkarCommon/telling/table.h>

namespace melkar {

namespace {

/// Pictures stand on white in both schemes, as on a screen of the charts' own.
constexpr const char* kStyle = R"(:root {
    --ground: #f3f5f8; --card: #fff; --edge: #dbe2ea; --text: #1f2a37; --soft: #526070; --link: #1d5c96;
}
@media (prefers-color-scheme: dark) {
    :root { --ground: #10151b; --card: #1a222c; --edge: #2f3b48; --text: #e6ebf1; --soft: #a5b2c0; --link: #8dc2f2; }
}
* { box-sizing: border-box; }
body { margin: 0; background: var(--ground); color: var(--text); font: 16px/1.5 system-ui, Inter, "DejaVu Sans", sans-serif; }
main { max-width: 980px; margin: 0 auto; padding: 24px; }
h1 { margin: 0 0 16px; font-size: 26px; line-height: 1.25; }
h2 { margin: 0 0 4px; font-size: 20px; line-height: 1.3; }
section { margin: 0 0 24px; padding: 20px; background: var(--card); border: 1px solid var(--edge); border-radius: 10px; }
p { margin: 0 0 14px; max-width: 60em; color: var(--soft); overflow-wrap: anywhere; }
figure { margin: 0 0 14px; padding: 10px; background: #fff; border: 1px solid var(--edge); border-radius: 8px; }
figure > svg { display: block; max-width: 100%; height: auto; margin: 0 auto; }
.table { overflow-x: auto; }
.table:focus-visible { outline: 2px solid var(--link); }
table { border-collapse: collapse; font-size: 15px; }
th, td { padding: 3px 14px 3px 0; border-bottom: 1px solid var(--edge); text-align: left; font-weight: 400; white-space: nowrap; }
thead th { font-weight: 600; white-space: normal; vertical-align: bottom; }
.figure { text-align: right; font-variant-numeric: tabular-nums; }
#balloon {
    position: fixed; z-index: 1; max-width: min(300px, calc(100vw - 16px)); padding: 5px 10px; border: 1px solid #b9a76a; border-radius: 6px;
    background: #fffae4; color: #1f2a37; font-size: 15px; pointer-events: none;
}
@media (max-width: 560px) {
    main { padding: 10px; }
    section { padding: 12px; }
    figure { padding: 4px; }
}
@media print {
    :root { --ground: #fff; --card: #fff; --edge: #bbb; --text: #000; --soft: #333; }
    main { max-width: none; padding: 0; }
    section { padding: 0; border: 0; }
    figure { border: 0; padding: 0; break-inside: avoid; }
    h2, p { break-after: avoid; }
    tr { break-inside: avoid; }
    .table { overflow: visible; }
    #balloon { display: none; }
}
)";

/// Names of parts become labels, since a title would show beside the balloon. A pointer that rests counts for nothing
/// where the keyboard moves the page below it.
constexpr const char* kScript = R"((() => {
const balloon = document.body.appendChild(document.createElement("div"));
balloon.id = "balloon";
balloon.ariaHidden = "true";
balloon.hidden = true;
const labelled = element => {
    const title = element.querySelector(":scope > title");
    element.setAttribute("aria-label", title.textContent);
    title.remove();
};
let shown = null;
const place = () => {
    const part = shown;
    if (!part) return;
    const box = part.getBoundingClientRect();
    const left = box.left + box.width / 2 - balloon.offsetWidth / 2;
    const above = box.top - balloon.offsetHeight - 6;
    balloon.style.left = Math.max(8, Math.min(left, document.documentElement.clientWidth - balloon.offsetWidth - 8)) + "px";
    balloon.style.top = Math.max(8, Math.min(above, innerHeight - balloon.offsetHeight - 8)) + "px";
};
const show = part => {
    shown = part;
    balloon.textContent = part.getAttribute("aria-label");
    balloon.hidden = false;
    place();
};
const hide = () => {
    shown = null;
    balloon.hidden = true;
};
for (const picture of document.querySelectorAll("figure > svg")) {
    labelled(picture);
    for (const part of picture.querySelectorAll("g[role^=graphics]")) {
        labelled(part);
        for (const event of ["pointermove", "focus"]) part.addEventListener(event, () => show(part));
        for (const event of ["pointerleave", "blur"]) part.addEventListener(event, () => { if (shown === part) hide(); });
    }
}
addEventListener("scroll", place, {passive: true});
addEventListener("keydown", event => { if (event.key === "Escape") hide(); });
})();
)";

std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char letter : text)
        switch (letter) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += static_cast<unsigned char>(letter) < ' ' ? ' ' : letter;
        }
    return escaped;
}

/// The element itself: what comes before it belongs to files alone.
std::string ElementOf(const std::string& svg) {
    const auto begin = svg.find("<svg");
    return begin == std::string::npos ? "" : svg.substr(begin);
}

std::string Cell(const std::string& name, const std::string& text, const std::string& attributes) {
    return "<" + name + attributes + ">" + Escaped(text) + "</" + name + ">";
}

std::string TableFor(const PageChart& chart, const std::string& title, const DescriptionWords& words) {
    const ContentsTable table = TableOf(chart.pictures, words);
    if (table.rows.empty())
        return "";
    std::string html = "<div class=\"table\" role=\"region\" tabindex=\"0\" aria-label=\"" + Escaped(title) +
                       "\"><table>\n<thead><tr>";
    for (std::size_t column = 0; column < table.head.size(); ++column)
        html += Cell("th", table.head[column],
                     std::string(" scope=\"col\"") + (IsFigureColumn(table, column) ? " class=\"figure\"" : ""));
    html += "</tr></thead>\n<tbody>\n";
    for (const auto& row : table.rows) {
        html += "<tr>" + Cell("th", row.front(), " scope=\"row\"");
        for (std::size_t column = 1; column < row.size(); ++column)
            html += Cell("td", row[column], IsFigureColumn(table, column) ? " class=\"figure\"" : "");
        html += "</tr>\n";
    }
    return html + "</tbody>\n</table></div>\n";
}

std::string SectionFor(const PageChart& chart, const DescriptionWords& words) {
    const PageWords said = WordsFor(chart.pictures, words);
    std::string html = "<section>\n" + Cell("h2", said.title, "") + "\n";
    if (!said.description.empty())
        html += Cell("p", said.description, "") + "\n";
    html += "<figure>\n" + ElementOf(chart.svg) + "</figure>\n";
    return html + TableFor(chart, said.title, words) + "</section>\n";
}

} // namespace

std::string HtmlOf(const std::vector<PageChart>& charts, const std::string& title, const DescriptionWords& words) {
    const std::string name =
        !title.empty() ? title
                       : WordsFor(charts.empty() ? std::vector<Contents>() : charts.front().pictures, words).title;
    std::string html = "<!doctype html>\n<html lang=\"" + Escaped(words.Language()) +
                       "\">\n<head>\n<meta charset=\"utf-8\">\n"
                       "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
                       "<meta name=\"color-scheme\" content=\"light dark\">\n" +
                       Cell("title", name, "") + "\n<style>\n" + kStyle + "</style>\n</head>\n<body>\n<main>\n";
    if (charts.size() > 1 || !title.empty())
        html += Cell("h1", name, "") + "\n";
    for (const PageChart& chart : charts)
        html += SectionFor(chart, words);
    return html + "</main>\n<script>\n" + kScript + "</script>\n</body>\n</html>\n";
}

} // namespace melkar
