#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/cstring.h>
#include <MelkarCommon/platform/types.h>

/// @file
/// A text with its looks.

/// A styled text: plain data.
class MELKAR_API CText {
public:
    /// Arguments as the members below, in another order.
    CText(CString text, int size, unsigned long color, const char* font, int escapement, int orientation, int weight,
          unsigned long italic, unsigned long underline, unsigned long strikeOut, unsigned long charSet,
          unsigned long outPrecision, unsigned long clipPrecision, unsigned long quality, unsigned long pitchAndFamily);
    CText(const CText&) = default;            ///< the same text
    CText& operator=(const CText&) = default; ///< the same text
    virtual ~CText() = default;

    CString GetText() const { return m_strText; } ///< the text without its looks

    CString m_strText;                ///< the text
    int m_nSize;                      ///< points
    COLORREF m_crColor;               ///< of the text
    int m_nEscapement;                ///< tenths of a degree
    int m_nOrientation;               ///< tenths of a degree
    int m_nWeight;                    ///< 400 regular, 700 bold
    unsigned long m_dwItalic;         ///< not 0: italic
    unsigned long m_dwUnderline;      ///< not 0: underlined
    unsigned long m_dwStrikeOut;      ///< not 0: struck out
    unsigned long m_dwCharSet;        ///< character set, as `lfCharSet`
    unsigned long m_dwOutPrecision;   ///< kept; no font uses it
    unsigned long m_dwClipPrecision;  ///< kept; no font uses it
    unsigned long m_dwQuality;        ///< kept; no font uses it
    unsigned long m_dwPitchAndFamily; ///< kept; no font uses it
    CString m_strFontName;            ///< face
    int m_nBkMode = TRANSPARENT;      ///< `TRANSPARENT` or `OPAQUE`
};
