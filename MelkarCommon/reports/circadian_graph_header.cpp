#include <MelkarCommon/reports/circadian_graph_header.h>

int CCircadianGraphHeader::CalcRect(HDC surface, CRect block, CString dataFile) {
    m_hDC = surface;
    GetData(dataFile);
    melkar::LayOutCircadianHeader(m_rcCells, block, MeasureSamples(m_nHeaderSize));
    return Draw(surface, block, dataFile);
}

/// A position below the block, as `CGraphHeader` gives it, so that a host goes on there with either.
int CCircadianGraphHeader::Draw(HDC, CRect, CString) { return m_rcCells[melkar::B4].bottom + melkar::kBelowHeader; }
