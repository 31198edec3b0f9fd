#pragma once

#include <MelkarCommon/api.h>
#include <MelkarCommon/platform/cstring.h>
#include <MelkarCommon/platform/types.h>

/// @file
/// A font with an owner.

/// Bits: 1 bold, 2 italic.
enum FontStyle : int { FontStyleRegular = 0, FontStyleBold = 1, FontStyleItalic = 2, FontStyleBoldItalic = 3 };

/// Owns one font handle from construction to destruction.
class MELKAR_API Font {
public:
    /// Makes the font. @param face its name @param style bits of `FontStyle` @param height as `lfHeight`: negative for
    /// an em height in pixels. @param escapement tenths of a degree.
    Font(const char* face, FontStyle style, int height, int escapement);
    ~Font();
    Font(const Font&) = delete;

    HFONT GetHFONT() const { return m_hFont; }                        ///< the font, to be selected; this object's
    CString GetName() const { return CString(m_LogFont.lfFaceName); } ///< of the face, as asked for
    FontStyle GetStyle() const { return m_eStyle; }                   ///< as asked for
    int GetSize() const { return m_LogFont.lfHeight; }                ///< the height, as asked for
    int GetFontHeight() const { return m_LogFont.lfHeight; }          ///< the same
    LOGFONTA GetLOGFONT() const { return m_LogFont; }                 ///< its description

private:
    Font& operator=(const Font&) { return *this; }

protected:
    HFONT m_hFont = nullptr;                         ///< null without memory
    LOGFONTA m_LogFont{};                            ///< its description
    FontStyle m_eStyle = static_cast<FontStyle>(-1); ///< -1 until the font is made
};
