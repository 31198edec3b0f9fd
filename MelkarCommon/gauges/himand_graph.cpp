#include <MelkarCommon/gauges/himand_graph.h>

#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/gauges/gauge_layout.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/support.h>

namespace {

constexpr const char* kLineSample = "tsttst"; ///< its height is that of the first strip, whatever the captions

} // namespace

struct CHimandGraph::KeyRows : melkar::Keys<CHimandGraph> {
    static constexpr Row rows[] = {
        Colors<&G::m_crClassName, &G::m_nClassCount>(Own, "CLASSCOLORNAME%d_RGB", "second strip of the class")
            .UnderText(),
        Texts<&G::m_saClassCaption2, &G::m_nClassCount>(Own, "CLASSCAPTION2_%d",
                                                        "caption in the second strip; ` __n__ ` breaks the line"),
    };
};

CHimandGraph::CHimandGraph(HWND window, HDC dc, const char* section, HDC shared, HDC second, HDC balloon)
    : CBMIGraph_Base(window, dc, section, shared, second, balloon) {
    m_nClassCount = kClasses;
    CHimandGraph::ReadIniFile(GraphProfile());
}

long CHimandGraph::ReadIniFile(char* path) {
    melkar::ReadKeys(KeyRows::rows, *this, path, m_strSection);
    return 0;
}

melkar::ClassKeys CHimandGraph::ProfileKeys() { return {"CHimandGraph", melkar::InfoOf(KeyRows::rows)}; }

long CHimandGraph::DrawCanvas() {
    DrawRectangle(m_hMemDC, m_rcGraph, m_crBase, m_crPen, 1);
    const melkar::ScopedFont font(m_hMemDC, ChartFont(kCaptionSize));
    SetBkMode(m_hMemDC, TRANSPARENT); // left to the figure of a derived class
    const int bottom = MeasureText(kLineSample, DT_CALCRECT, m_rcGraph).bottom;
    for (int cls = 0; cls < kClasses; ++cls) {
        const CRect strip = FirstStripOf(cls, bottom);
        DrawStrip(strip, m_crClass[cls], CaptionOf(m_saClassCaption, cls));
        // Directly after the first: it covers what a caption of more lines leaves below its strip.
        DrawStrip(melkar::SecondStrip(m_rcGraph, strip), m_crClassName[cls], CaptionOf(m_saClassCaption2, cls));
    }
    m_rcCanvas = CRect(m_rcGraph.left, bottom, m_rcGraph.right, m_rcGraph.bottom);
    return 0;
}

CRect CHimandGraph::FirstStripOf(int cls, int bottom) const {
    const melkar::GaugeScale scale{double(m_nMin), double(m_nMax), m_rcGraph.left, m_rcGraph.right};
    return melkar::FirstStrip(m_rcGraph, scale, m_dClassMax, static_cast<std::size_t>(cls), bottom);
}

/// Centred across, from the top down: only a single line could be centred down.
void CHimandGraph::DrawStrip(const CRect& strip, COLORREF color, const CString& caption) {
    DrawRectangle(m_hMemDC, strip, color, m_crPen, 1);
    PaintText(caption, strip, DT_CENTER | DT_VCENTER);
}

long CHimandGraph::DrawValue() {
    const CRect band = melkar::DiscBand(m_rcGraph, m_rcCanvas);
    const melkar::ScopedFont font(m_hMemDC, ChartFont(kFigureSize));
    const CString text = FigureText();
    if (IsBelowScale())
        PaintText(text, CRect(band.left + 1, band.top, band.right, band.bottom), melkar::kFigureAtLeft);
    else if (IsAboveScale())
        PaintText(text, CRect(1, band.top, band.right, band.bottom), melkar::kFigureAtRight);
    else
        DrawDisc(band, text);
    return 0;
}

CString CHimandGraph::FigureText() const { return m_strValue + " %"; }

/// Of a figure on the scale.
CRect CHimandGraph::DiscIn(const CRect& band) const {
    const melkar::GaugeScale scale{double(m_nMin), double(m_nMax), band.left, band.right};
    return melkar::DiscAt(band, scale.FigureX(m_dValue));
}

/// The disc comes last and stands over the text where they meet, as they do at the right edge.
void CHimandGraph::DrawDisc(const CRect& band, const CString& text) {
    const CRect disc = DiscIn(band);
    const CRect behind(disc.right, band.top, band.right, band.bottom);
    if (MeasureText(text, melkar::kFigureAtRight | DT_CALCRECT, behind).right > band.right)
        PaintText(text, CRect(disc.left, band.top, band.right, band.bottom), melkar::kFigureAtRight);
    else
        PaintText(text, behind, melkar::kFigureAtLeft);
    const melkar::ScopedBrush brush(m_hMemDC, ClassColor(m_nClass));
    Ellipse(m_hMemDC, disc.left, disc.top, disc.right, disc.bottom);
}
