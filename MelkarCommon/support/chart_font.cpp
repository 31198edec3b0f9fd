#include <MelkarCommon/support/chart_font.h>

#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/measures.h>
#include <MelkarCommon/support/support.h>

#include <algorithm>

namespace melkar {

HFONT MakeFont(int emHeight, int weight, int charset, const char* face, int escapement) {
    constexpr DWORD kPitchAndFamily = 0x31;
    return CreateFontA(-emHeight, 0, escapement, 0, weight, 0, 0, 0, static_cast<DWORD>(charset), 0, 0, PROOF_QUALITY,
                       kPitchAndFamily, face);
}

HFONT MakeChartFont(HDC surface, int points, int charset, const char* face, int escapement) {
    const int height = ChartMulDiv(std::min(points, kMostPoints), GetDeviceCaps(surface, LOGPIXELSY), kPointsPerInch);
    return MakeFont(height, FW_NORMAL, charset, face, escapement);
}

} // namespace melkar
