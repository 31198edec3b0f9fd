#include <MelkarCommon/reports/circadian_graph_header.h>

#include <MelkarCommon/reports/report_header_layout.h>

int CCircadianGraphHeader::CalcRect(HDC surface, CRect block, CString dataFile) {
    m_hDC = surface;
    GetData(dataFile);
    melkar::LayOutCircadianHeader(m_rcCells, block, MeasureSamples(m_nHeaderSize));
    return melkar::BelowHeader(m_rcCells[melkar::B4]);
}

int CCircadianGraphHeader::Draw(HDC, CRect, CString) { return melkar::BelowHeader(m_rcCells[melkar::B4]); }
