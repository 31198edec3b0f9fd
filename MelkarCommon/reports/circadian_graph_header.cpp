#include <MelkarCommon/reports/circadian_graph_header.h>

int CCircadianGraphHeader::CalcRect(HDC surface, CRect block, CString dataFile) {
    m_hDC = surface;
    GetData(dataFile);
    melkar::LayOutCircadianHeader(m_rcCells, block, MeasureSamples(m_nHeaderSize));
    return EndOfBlock();
}

int CCircadianGraphHeader::Draw(HDC, CRect, CString) { return EndOfBlock(); }
