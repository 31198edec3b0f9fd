#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/cstring.h>
#include <MelkarCommon/platform/types.h>

/// A styled text: plain data.
class MELKAR_API CText {
public:
    CText(CString text, int size, unsigned long color, const char* font, int escapement, int orientation, int weight,
          unsigned long italic, unsigned long underline, unsigned long strikeOut, unsigned long charSet,
          unsigned long outPrecision, unsigned long clipPrecision, unsigned long quality, unsigned long pitchAndFamily);
    CText(const CText&) = default;
    CText& operator=(const CText&) = default;
    virtual ~CText() = default;

    CString GetText() const { return m_strText; }

    CString m_strText;
    int m_nSize; ///< points
    COLORREF m_crColor;
    int m_nEscapement;  ///< tenths of a degree
    int m_nOrientation; ///< tenths of a degree
    int m_nWeight;      ///< 400 regular, 700 bold
    unsigned long m_dwItalic;
    unsigned long m_dwUnderline;
    unsigned long m_dwStrikeOut;
    unsigned long m_dwCharSet;
    unsigned long m_dwOutPrecision;
    unsigned long m_dwClipPrecision;
    unsigned long m_dwQuality;
    unsigned long m_dwPitchAndFamily;
    CString m_strFontName;
    int m_nBkMode = TRANSPARENT;
};
