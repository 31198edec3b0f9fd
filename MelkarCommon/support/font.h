#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/cstring.h>
#include <MelkarCommon/platform/types.h>

/// Bits: 1 bold, 2 italic.
enum FontStyle : int { FontStyleRegular = 0, FontStyleBold = 1, FontStyleItalic = 2, FontStyleBoldItalic = 3 };

/// Owns one font handle from construction to destruction.
class MELKAR_API Font {
public:
    /// @param height as `lfHeight`: negative for an em height in pixels. @param escapement tenths of a degree.
    Font(const char* face, FontStyle style, int height, int escapement);
    ~Font();
    Font(const Font&) = delete;

    HFONT GetHFONT() const { return m_hFont; }
    CString GetName() const { return CString(m_LogFont.lfFaceName); }
    FontStyle GetStyle() const { return m_eStyle; }
    int GetSize() const { return m_LogFont.lfHeight; }
    int GetFontHeight() const { return m_LogFont.lfHeight; }
    LOGFONTA GetLOGFONT() const { return m_LogFont; }

private:
    Font& operator=(const Font&) { return *this; }

protected:
    HFONT m_hFont = nullptr;
    LOGFONTA m_LogFont{};
    FontStyle m_eStyle = static_cast<FontStyle>(-1); ///< -1 until the font is made
};
