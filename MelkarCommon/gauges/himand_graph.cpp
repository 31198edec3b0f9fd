#include <MelkarCommon/gauges/himand_graph.h>

#include <MelkarCommon/frame/key_table.h>
#include <MelkarCommon/gauges/gauge_layout.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/support/support.h>

namespace {

constexpr int kClasses = 3;
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
    const melkar::GaugeScale scale{double(m_nMin), double(m_nMax), m_rcGraph.left, m_rcGraph.right};
    CRect strip = m_rcGraph;
    strip.bottom = MeasureText(kLineSample, DT_CALCRECT, m_rcGraph).bottom;
    for (int i = 0; i < kClasses; ++i) {
        strip.left = i == 0 ? m_rcGraph.left : strip.right;
        strip.right = scale.BoundX(m_dClassMax[i]);
        DrawStrip(strip, m_crClass[i], m_saClassCaption[i]);
        // Directly after the first: it covers what a caption of more lines leaves below its strip.
        DrawStrip(melkar::SecondStrip(m_rcGraph, strip), m_crClassName[i], m_saClassCaption2[i]);
    }
    m_rcCanvas = CRect(m_rcGraph.left, strip.bottom, m_rcGraph.right, m_rcGraph.bottom);
    return 0;
}

/// Centred across, from the top down: only a single line could be centred down.
void CHimandGraph::DrawStrip(const CRect& strip, COLORREF color, CString caption) {
    DrawRectangle(m_hMemDC, strip, color, m_crPen, 1);
    caption.Replace(" __n__ ", "\n");
    PaintText(caption, strip, DT_CENTER | DT_VCENTER);
}

long CHimandGraph::DrawValue() {
    const CRect band = melkar::DiscBand(m_rcGraph, m_rcCanvas);
    const melkar::GaugeScale scale{double(m_nMin), double(m_nMax), band.left, band.right};
    const melkar::ScopedFont font(m_hMemDC, ChartFont(kFigureSize));
    const CString text = m_strValue + " %";
    if (IsBelowScale())
        PaintText(text, CRect(band.left + 1, band.top, band.right, band.bottom), melkar::kFigureAtLeft);
    else if (IsAboveScale())
        PaintText(text, CRect(1, band.top, band.right, band.bottom), melkar::kFigureAtRight);
    else
        DrawDisc(band, scale.FigureX(m_dValue), text);
    return 0;
}

/// The disc comes last and stands over the text where they meet, as they do at the right edge.
void CHimandGraph::DrawDisc(const CRect& band, int x, const CString& text) {
    const int radius = band.Height() / 2;
    const CRect behind(x + radius, band.top, band.right, band.bottom);
    if (MeasureText(text, melkar::kFigureAtRight | DT_CALCRECT, behind).right > band.right)
        PaintText(text, CRect(x - radius, band.top, band.right, band.bottom), melkar::kFigureAtRight);
    else
        PaintText(text, behind, melkar::kFigureAtLeft);
    const melkar::ScopedBrush brush(m_hMemDC, ClassColor(m_nClass));
    Ellipse(m_hMemDC, x - radius, band.top, x + radius, band.bottom);
}
