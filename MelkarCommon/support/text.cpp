#include <MelkarCommon/support/text.h>

#include <utility>

CText::CText(CString text, int size, unsigned long color, const char* font, int escapement, int orientation, int weight,
             unsigned long italic, unsigned long underline, unsigned long strikeOut, unsigned long charSet,
             unsigned long outPrecision, unsigned long clipPrecision, unsigned long quality,
             unsigned long pitchAndFamily)
    : m_strText(std::move(text)), m_nSize(size), m_crColor(static_cast<COLORREF>(color)), m_nEscapement(escapement),
      m_nOrientation(orientation), m_nWeight(weight), m_dwItalic(italic), m_dwUnderline(underline),
      m_dwStrikeOut(strikeOut), m_dwCharSet(charSet), m_dwOutPrecision(outPrecision), m_dwClipPrecision(clipPrecision),
      m_dwQuality(quality), m_dwPitchAndFamily(pitchAndFamily), m_strFontName(font) {}
