#include <MelkarCommon/support/font.h>

#include <MelkarCommon/platform/drawing.h>

#include <cstring>

Font::Font(const char* face, FontStyle style, int height, int escapement) {
    m_LogFont.lfHeight = height;
    m_LogFont.lfEscapement = escapement;
    m_LogFont.lfWeight = style & FontStyleBold ? FW_BOLD : FW_NORMAL;
    m_LogFont.lfItalic = style & FontStyleItalic ? 1 : 0;
    m_LogFont.lfCharSet = DEFAULT_CHARSET;
    if (face)
        std::memcpy(m_LogFont.lfFaceName, face, strnlen(face, LF_FACESIZE - 1));
    m_hFont = CreateFontIndirectA(&m_LogFont);
    m_eStyle = style;
}

Font::~Font() {
    DeleteObject(m_hFont);
    m_hFont = nullptr;
}
