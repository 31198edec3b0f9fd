#include <MelkarCommon/platform/images/encoders.h>
#include <MelkarCommon/platform/pages/ink.h>
#include <MelkarCommon/platform/pages/page_formats.h>
#include <MelkarCommon/platform/pages/svg_words.h>
#include <MelkarCommon/platform/seam/box.h>
#include <MelkarCommon/platform/seam/corners.h>
#include <MelkarCommon/platform/seam/slice.h>
#include <MelkarCommon/platform/text/text_engine.h>

#include <algorithm>
#include <cmath>
#include <optional>

/// @file
/// A page as SVG: an element for each verb. Coordinates are device units; the size of the whole is in CSS pixels.

namespace melkar {

namespace {

constexpr double kCssPixelsPerInch = 96;
constexpr double kLeastSpacing = 0.001; // device units; less is written as 0

/// Of the part with the focus: dark, in a light glow, for any ground.
constexpr const char* kFocusStyle = "g[role^=graphics]:focus{outline:none}"
                                    "g[role^=graphics]:focus rect{stroke:#000;stroke-width:3;"
                                    "filter:drop-shadow(0 0 1px #fff) drop-shadow(0 0 1px #fff)}";

/// One part is reached by the tabulator, the others from there by the arrow keys. Holds nothing that XML takes for its
/// own.
constexpr const char* kWalkScript = R"((() => {
const parts = [...document.currentScript.parentNode.querySelectorAll("g[role^=graphics]")];
const steps = {ArrowRight: 1, ArrowDown: 1, ArrowLeft: -1, ArrowUp: -1, Home: -parts.length, End: parts.length};
parts.forEach((part, at) => {
part.setAttribute("tabindex", at ? -1 : 0);
part.addEventListener("keydown", event => {
if (!steps[event.key]) return;
event.preventDefault();
const to = Math.max(0, Math.min(parts.length - 1, at + steps[event.key]));
part.setAttribute("tabindex", -1);
parts[to].setAttribute("tabindex", 0);
parts[to].focus();
});
});
})();)";

class SvgBackend final : public PageFile {
public:
    SvgBackend(std::unique_ptr<NewFile> file, PageFormat format, int width, int height, int dpi,
               const DocumentInfo& info);

    bool BeginPage() override;
    void EndPage() override;
    bool Finish() override;
    void Abandon() override;
    bool SetWords(const PageWords& words) override;
    void SetClip(const RECT& clip) override;
    void FillRect(const RECT& rect, Color color) override;
    void FillFramed(const RECT& outer, int width, Color frame, std::optional<Color> ground) override;
    void FillShape(const Shape& shape, Color color) override;
    void StrokeShape(const Shape& shape, const Stroke& stroke) override;
    void StrokePolyline(std::span<const POINT> points, const Stroke& stroke) override;
    void PaintText(const std::shared_ptr<const TextLayout>& layout, std::size_t line, POINT at, int escapement,
                   Color color, const RECT& clip) override;
    void Blit(const RECT& target, const PixelBuffer& pixels, const RECT& source, DWORD operation) override;

private:
    bool BeginElement(const RECT& box, const RECT& clip);
    void EndClip();
    void EndFont();
    void UseFont(const FontLook& look);
    void WriteOut();
    void WriteParts();
    void InsertWords();

    void OpenRectangle(const Area& area);
    void OpenShape(const PolygonShape& polygon, const SliceReach& reach);
    void OpenShape(const EllipseShape& ellipse, const SliceReach& reach);
    void OpenShape(const SliceShape& slice, const SliceReach& reach);
    void OpenPolygon(std::span<const PointD> corners);
    bool OpenShape(const Shape& shape, double margin, const SliceReach& reach);

    /// What the pen draws with.
    auto Ink() {
        return Overloaded{
            [this](const PaperLine& line, const Stroke& stroke) { StrokeLine(line, stroke); },
            [this](const PolygonShape& polygon, Color color) { WriteShape(polygon, color); },
        };
    }
    void FinishLines() { m_pen.Lift(m_clip, Ink()); }
    void WriteShape(const Shape& shape, Color color);
    void WriteFilling(const PolygonFilling& filling);
    void StrokeLine(const PaperLine& line, const Stroke& stroke);
    void WriteLine(const PaperLine& line);
    void WriteStroke(Color color, double width);
    void WriteText(const TextLayout& layout, const TextLine& line, POINT at, int escapement);
    void WriteOutlines(const TextLayout& layout, std::size_t line, POINT at, int escapement, Color color);
    void WriteTurn(POINT at, int escapement);

    std::unique_ptr<NewFile> m_file;
    PageFormat m_format;
    int m_dpi;
    RECT m_sheet;
    RECT m_page{0, 0, 0, 0}; ///< the sheet while the page is open, else empty
    RECT m_clip{0, 0, 0, 0};
    bool m_hasPage = false;
    bool m_hasEnded = false;
    PaperPen m_pen;
    std::string m_openFont;            ///< attributes of the texts being written; empty: none
    RECT m_openClip{};                 ///< of the elements being written; empty: none
    std::optional<PageWords> m_spoken; ///< none: nobody told any
    std::size_t m_headBytes = 0;       ///< of the file, up to the end of its first element's attributes
    std::string m_text;
    SvgWords m_words{m_text};
};

SvgBackend::SvgBackend(std::unique_ptr<NewFile> file, PageFormat format, int width, int height, int dpi,
                       const DocumentInfo& info)
    : m_file(std::move(file)), m_format(format), m_dpi(dpi), m_sheet{0, 0, width, height} {
    m_words.Raw("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"");
    m_words.Value("width", width * kCssPixelsPerInch / dpi).Value("height", height * kCssPixelsPerInch / dpi);
    m_words.Raw(" viewBox=\"0 0 ").Number(width).Raw(" ").Number(height).Raw("\"");
    m_headBytes = m_text.size();
    m_words.Raw(">\n");
    if (!info.title.empty())
        m_words.Raw("<title>").Escaped(info.title).Raw("</title>\n");
}

/// There is room for one page. It starts white, as a picture does: what shows the file may stand on any ground.
bool SvgBackend::BeginPage() {
    if (m_hasEnded || m_hasPage)
        return false;
    m_hasPage = true;
    m_clip = m_page = m_sheet;
    FillRect(m_page, kWhitePixel);
    return true;
}

void SvgBackend::EndPage() {
    FinishLines();
    m_clip = m_page = {0, 0, 0, 0};
}

void SvgBackend::SetClip(const RECT& clip) {
    FinishLines();
    m_clip = ClipBox(ToBox(clip), m_page);
}

void SvgBackend::Abandon() {
    m_hasEnded = true;
    m_pen = {};
    EndPage();
    m_file->Abandon();
}

bool SvgBackend::Finish() {
    if (m_hasEnded)
        return false;
    m_hasEnded = true;
    EndPage();
    EndFont();
    WriteParts();
    m_words.Raw("</svg>\n");
    m_file->Write(m_text.data(), m_text.size());
    InsertWords();
    return FinishPage(*m_file, m_format, m_hasPage ? nullptr : "no page");
}

/// Whole elements go out in blocks.
void SvgBackend::WriteOut() {
    constexpr std::size_t kBlock = 1 << 16;
    if (m_text.size() < kBlock)
        return;
    m_file->Write(m_text.data(), m_text.size());
    m_text.clear();
}

bool SvgBackend::SetWords(const PageWords& words) {
    if (m_hasEnded)
        return false;
    m_spoken = words;
    return true;
}

/// Parts lie on top of what is drawn, where nothing is seen of them but which one has the focus. Their names are
/// titles, which readers show at the pointer.
void SvgBackend::WriteParts() {
    if (!m_spoken || m_spoken->parts.empty())
        return;
    m_words.Raw("</g>\n<style>").Raw(kFocusStyle).Raw("</style>\n");
    for (const PagePart& part : m_spoken->parts) {
        m_words.Raw("<g role=\"graphics-symbol img\" tabindex=\"0\"><title>").Escaped(part.name).Raw("</title><rect");
        m_words.Value("x", part.area.left).Value("y", part.area.top);
        m_words.Value("width", double{1} * part.area.right - part.area.left);
        m_words.Value("height", double{1} * part.area.bottom - part.area.top);
        m_words.Raw(" fill=\"none\" pointer-events=\"all\"/></g>\n");
        WriteOut();
    }
    m_words.Raw("<script>").Raw(kWalkScript).Raw("</script>\n");
}

/// They come before all else, and are known last.
void SvgBackend::InsertWords() {
    if (!m_spoken)
        return;
    const bool isWalked = !m_spoken->parts.empty();
    std::string text;
    SvgWords words(text);
    if (!m_spoken->language.empty())
        words.Value("xml:lang", m_spoken->language);
    words.Raw(isWalked ? " role=\"graphics-document document\"" : " role=\"img\"");
    words.Raw(">\n<title>").Escaped(m_spoken->title).Raw("</title");
    if (!m_spoken->description.empty())
        words.Raw(">\n<desc>").Escaped(m_spoken->description).Raw("</desc");
    if (isWalked)
        words.Raw(">\n<g aria-hidden=\"true\"");
    m_file->Insert(m_headBytes, text); // what stood behind the attributes closes the last element
}

/// Makes ready for an element that paints in `box`: within `clip` alone if part of the box is beyond it. A part of the
/// page that clips is an inner picture, which needs no name. @return false if nothing of the element shows
bool SvgBackend::BeginElement(const RECT& box, const RECT& clip) {
    const RECT visible = ClipBox(ToBox(clip), m_clip);
    if (IsEmptyRect(ClipBox(ToBox(box), visible)))
        return false;
    WriteOut();
    const bool isWhole = Covers(visible, box) || Covers(visible, m_sheet);
    const RECT wanted = isWhole ? RECT{} : visible;
    if (Covers(wanted, m_openClip) && Covers(m_openClip, wanted))
        return true;
    EndClip();
    if (isWhole)
        return true;
    const double width = double{1} * wanted.right - wanted.left;
    const double height = double{1} * wanted.bottom - wanted.top;
    m_words.Raw("<svg").Value("x", wanted.left).Value("y", wanted.top).Value("width", width).Value("height", height);
    m_words.Raw(" viewBox=\"").Number(wanted.left).Raw(" ").Number(wanted.top).Raw(" ");
    m_words.Number(width).Raw(" ").Number(height).Raw("\">\n");
    m_openClip = wanted;
    return true;
}

void SvgBackend::EndClip() {
    if (!IsEmptyRect(m_openClip))
        m_words.Raw("</svg>\n");
    m_openClip = {};
}

void SvgBackend::EndFont() {
    EndClip();
    if (!m_openFont.empty())
        m_words.Raw("</g>\n");
    m_openFont.clear();
}

/// A font stands once for all that follows until another one is used; what is no text doesn't mind.
void SvgBackend::UseFont(const FontLook& look) {
    std::string font;
    SvgWords words(font);
    words.Value("font-family", look.families).Value("font-size", look.em);
    if (look.weight != FW_NORMAL)
        words.Value("font-weight", look.weight);
    if (look.italic)
        words.Raw(" font-style=\"italic\"");
    if (!look.language.empty())
        words.Value("xml:lang", look.language);
    if (font == m_openFont)
        return;
    EndFont();
    m_words.Raw("<g").Raw(font).Raw(">\n");
    m_openFont = font;
}

void SvgBackend::FillRect(const RECT& rect, Color color) {
    FinishLines();
    const RECT visible = ClipBox(ToBox(rect), m_clip);
    if (!BeginElement(visible, visible))
        return;
    OpenRectangle(
        {double{1} * visible.left, double{1} * visible.top, double{1} * visible.right, double{1} * visible.bottom});
    m_words.Paint("fill", color).Raw("/>\n");
}

void SvgBackend::FillFramed(const RECT& outer, int width, Color frame, std::optional<Color> ground) {
    const std::optional<Area> middle = FrameOnPaper(outer, width, m_clip);
    if (!middle)
        return Backend::FillFramed(outer, width, frame, ground);
    FinishLines();
    if (!BeginElement(outer, m_clip))
        return;
    OpenRectangle(*middle);
    if (ground)
        m_words.Paint("fill", *ground);
    else
        m_words.Raw(" fill=\"none\"");
    WriteStroke(frame, width);
    m_words.Raw("/>\n");
}

void SvgBackend::OpenRectangle(const Area& area) {
    m_words.Raw("<rect").Value("x", area.left).Value("y", area.top);
    m_words.Value("width", area.right - area.left).Value("height", area.bottom - area.top);
}

void SvgBackend::OpenPolygon(std::span<const PointD> corners) {
    m_words.Raw("<polygon points=\"").Points(corners).Raw("\"");
}

void SvgBackend::OpenShape(const PolygonShape& polygon, const SliceReach&) {
    std::vector<PointD> corners;
    for (const POINT& point : polygon.points)
        corners.push_back({static_cast<double>(point.x), static_cast<double>(point.y)});
    OpenPolygon(corners);
}

void SvgBackend::OpenShape(const EllipseShape& ellipse, const SliceReach&) {
    const auto& [center, radius] = ellipse;
    const bool isCircle = radius.x == radius.y;
    m_words.Raw(isCircle ? "<circle" : "<ellipse").Value("cx", center.x).Value("cy", center.y);
    if (isCircle)
        m_words.Value("r", radius.x);
    else
        m_words.Value("rx", radius.x).Value("ry", radius.y);
}

void SvgBackend::OpenShape(const SliceShape& slice, const SliceReach& reach) {
    if (slice.sweep >= kTurn)
        return OpenShape(slice.whole, reach);
    m_words.Raw("<path d=\"M").Point(slice.apex).Raw("L").Point(RimPoint(slice.whole, slice.from));
    m_words.Raw("A").Point(slice.whole.radius).Raw(slice.sweep > kTurn / 2 ? " 0 1 0 " : " 0 0 0 ");
    m_words.Point(RimPoint(slice.whole, slice.from + slice.sweep)).Raw("z");
    if (reach.width > 0)
        m_words.Raw("M").Points(ReachOf(slice, reach)).Raw("z");
    m_words.Raw("\"");
}

/// Begins the element of a shape that is painted up to `margin` beyond its edge; a slice reaches as far under the next
/// one as `reach` says. @return false if it doesn't show
bool SvgBackend::OpenShape(const Shape& shape, double margin, const SliceReach& reach) {
    if (!HasArea(shape))
        return false;
    const Area bounds = AreaOf(shape);
    if (!Touches(bounds, m_clip, margin))
        return false;
    const bool isNear = IsNear(bounds);
    if (!BeginElement(isNear ? PixelsAround(bounds, margin) : m_clip, m_clip))
        return false;
    std::visit([&](const auto& kind) { isNear ? OpenShape(kind, reach) : OpenPolygon(NearCorners(kind)); }, shape);
    return true;
}

void SvgBackend::FillShape(const Shape& shape, Color color) {
    FinishLines();
    if (const auto* polygon = std::get_if<PolygonShape>(&shape))
        m_pen.Fill(*polygon, color);
    else
        WriteShape(shape, color);
}

void SvgBackend::WriteShape(const Shape& shape, Color color) {
    if (!OpenShape(shape, 0, ReachOnPaper(m_dpi)))
        return;
    const auto* polygon = std::get_if<PolygonShape>(&shape);
    WriteFilling({color, polygon == nullptr || polygon->winding});
    m_words.Raw("/>\n");
}

void SvgBackend::StrokeShape(const Shape& shape, const Stroke& stroke) {
    FinishLines();
    const Stroke printed = OnPaper(stroke, m_dpi);
    if (!OpenShape(shape, printed.width, {0}))
        return;
    m_words.Raw(" fill=\"none\"");
    WriteStroke(printed.color, printed.width);
    m_words.Raw(" stroke-linejoin=\"round\"/>\n");
}

void SvgBackend::WriteFilling(const PolygonFilling& filling) {
    m_words.Paint("fill", filling.color);
    if (!filling.winding)
        m_words.Value("fill-rule", "evenodd");
}

void SvgBackend::WriteStroke(Color color, double width) {
    m_words.Paint("stroke", color);
    if (width != 1)
        m_words.Value("stroke-width", width);
}

/// A line's geometry, up to its colours.
void SvgBackend::WriteLine(const PaperLine& line) {
    if (line.points.size() == 2) {
        const PointD& start = line.points[0];
        const PointD& end = line.points[1];
        m_words.Raw("<path d=\"M").Point(start);
        if (start.y == end.y)
            m_words.Raw("H").Number(end.x).Raw("\"");
        else if (start.x == end.x)
            m_words.Raw("V").Number(end.y).Raw("\"");
        else
            m_words.Raw("L").Point(end).Raw("\"");
        return;
    }
    m_words.Raw(line.isClosed ? "<polygon points=\"" : "<polyline points=\"").Points(line.points);
    m_words.Raw("\"");
    if (!line.filling)
        m_words.Raw(" fill=\"none\"");
    if (line.hasRoundCorners)
        m_words.Raw(" stroke-linejoin=\"round\"");
}

/// The gaps of a pattern first.
void SvgBackend::StrokeLine(const PaperLine& line, const Stroke& stroke) {
    Area area;
    for (const PointD& point : line.points)
        area.Add(point);
    const double margin = stroke.width; // of a corner
    if (!BeginElement(PixelsAround(area, margin), m_clip))
        return;
    const bool isPatterned = HasPattern(stroke);
    if (!isPatterned || stroke.gaps) {
        const Color color = isPatterned ? stroke.gapColor : stroke.color;
        WriteLine(line);
        if (line.filling)
            WriteFilling(*line.filling);
        WriteStroke(color, stroke.width);
        m_words.Raw(line.hasRoundEnds ? " stroke-linecap=\"round\"/>\n" : "/>\n");
    }
    if (!isPatterned)
        return;
    WriteLine(line);
    WriteStroke(stroke.color, stroke.width);
    m_words.Raw(" stroke-dasharray=\"").Number(stroke.on).Raw(" ").Number(stroke.off).Raw("\"");
    if (const double phase = PhaseInPeriod(stroke, line.phase); phase != 0)
        m_words.Value("stroke-dashoffset", phase);
    m_words.Raw("/>\n");
}

void SvgBackend::StrokePolyline(std::span<const POINT> points, const Stroke& stroke) {
    m_pen.Stroke(points, m_clip, OnPaper(stroke, m_dpi), Ink());
}

void SvgBackend::WriteTurn(POINT at, int escapement) {
    if (escapement % kFullTurn == 0)
        return;
    m_words.Raw(" transform=\"rotate(").Number(-(escapement % kFullTurn) / 10.0).Raw(" ");
    m_words.Number(at.x).Raw(" ").Number(at.y).Raw(")\"");
}

/// What each letter needs behind it, so that the line is as long as measured where readers don't know of lengths.
double LetterSpacing(const TextLine& line) {
    return line.letters > 0 ? (line.width - line.width / line.stretch) / line.letters : 0;
}

/// The characters at their measured length, whatever faces a reader has.
void SvgBackend::WriteText(const TextLayout& layout, const TextLine& line, POINT at, int escapement) {
    const bool hasBlanks =
        line.utf8.starts_with(' ') || line.utf8.ends_with(' ') || line.utf8.find("  ") != std::string::npos;
    m_words.Raw(hasBlanks ? "<text xml:space=\"preserve\"" : "<text")
        .Value("x", at.x)
        .Value("y", double{1} * at.y + layout.ascent);
    m_words.Value("textLength", line.width).Raw(" lengthAdjust=\"spacingAndGlyphs\"");
    if (const double spacing = LetterSpacing(line); std::abs(spacing) >= kLeastSpacing)
        m_words.Value("letter-spacing", spacing);
    if (line.underline || line.strikeOut)
        m_words.Raw(line.underline && line.strikeOut ? " text-decoration=\"underline line-through\""
                    : line.underline                 ? " text-decoration=\"underline\""
                                                     : " text-decoration=\"line-through\"");
    WriteTurn(at, escapement);
}

void SvgBackend::WriteOutlines(const TextLayout& layout, std::size_t line, POINT at, int escapement, Color color) {
    const std::vector<OutlineStep> outline = LineOutline(layout, line);
    if (outline.empty())
        return;
    m_words.Raw("<path d=\"");
    for (const OutlineStep& step : outline) {
        const char name[] = {static_cast<char>(step.kind), '\0'};
        m_words.Raw(name);
        for (int i = 0; i < step.Points(); ++i)
            m_words.Raw(i == 0 ? "" : " ").Point({at.x + step.points[i].x, at.y + step.points[i].y});
    }
    m_words.Raw("\"").Paint("fill", color);
    WriteTurn(at, escapement);
    m_words.Raw("/>\n");
}

void SvgBackend::PaintText(const std::shared_ptr<const TextLayout>& layout, std::size_t line, POINT at, int escapement,
                           Color color, const RECT& clip) {
    FinishLines();
    if (layout == nullptr || layout->look == nullptr || line >= layout->lines.size() || !IsNear(at))
        return;
    const TextLine& text = layout->lines[line];
    Area area;
    for (const PointD& corner : TurnedBox(at, text.width, layout->lineHeight, escapement))
        area.Add(corner);
    if (text.width <= 0 || IsEmptyRect(ClipBox(ToBox(PixelsAround(area, 0)), ClipBox(ToBox(clip), m_clip))))
        return;
    UseFont(*layout->look);
    BeginElement(PixelsAround(area, 0), clip);
    if (m_format == PageFormat::SvgOutlines)
        WriteOutlines(*layout, line, at, escapement, color);
    WriteText(*layout, text, at, escapement);
    if (m_format == PageFormat::SvgOutlines)
        m_words.Raw(" fill-opacity=\"0\"");
    else if (color != kBlackPixel)
        m_words.Paint("fill", color);
    m_words.Raw(">").Escaped(text.utf8).Raw("</text>\n");
}

void SvgBackend::Blit(const RECT& target, const PixelBuffer& pixels, const RECT& source, DWORD operation) {
    FinishLines();
    if (!CanBlit(pixels, source, operation) || !BeginElement(target, m_clip))
        return;
    std::vector<Color> paper = OnPaper(pixels, source, operation);
    const int width = source.right - source.left;
    const PixelBuffer picture{paper.data(), width, source.bottom - source.top, width};
    m_words.Raw("<image").Value("x", target.left).Value("y", target.top);
    m_words.Value("width", double{1} * target.right - target.left);
    m_words.Value("height", double{1} * target.bottom - target.top).Raw(" preserveAspectRatio=\"none\"");
    if (operation != SRCCOPY)
        m_words.Raw(" image-rendering=\"pixelated\"");
    m_words.Raw(" href=\"data:image/png;base64,").Base64(EncodePng(picture, operation != SRCCOPY)).Raw("\"/>\n");
}

} // namespace

std::unique_ptr<PageFile> MakeSvgPage(std::unique_ptr<NewFile> file, PageFormat format, int width, int height, int dpi,
                                      const DocumentInfo& info) {
    return std::make_unique<SvgBackend>(std::move(file), format, width, height, dpi, info);
}

} // namespace melkar
