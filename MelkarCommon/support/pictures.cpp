#include <MelkarCommon/support/pictures.h>

#include <MelkarCommon/platform/cstring.h>
#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/support/box_layout.h>
#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/ring_log.h>

#include <exception>

namespace {

constexpr int kFailed = 1200; ///< an exception while drawing

/// A picture file as a surface to copy from.
class LoadedPicture {
public:
    /// A width and height of 0 leave the size to the file.
    LoadedPicture(HDC suits, const char* file, int width, int height)
        : m_bitmap(static_cast<HBITMAP>(
              LoadImageA(nullptr, file, IMAGE_BITMAP, width, height, LR_LOADFROMFILE | LR_CREATEDIBSECTION))) {
        if (!m_bitmap)
            return;
        m_surface = CreateCompatibleDC(suits);
        m_former = SelectObject(m_surface, m_bitmap);
        BITMAP size{};
        GetObjectA(m_bitmap, sizeof size, &size);
        m_width = size.bmWidth;
        m_height = size.bmHeight;
    }
    ~LoadedPicture() {
        SelectObject(m_surface, m_former);
        DeleteDC(m_surface);
        DeleteObject(m_bitmap);
    }
    LoadedPicture(const LoadedPicture&) = delete;
    LoadedPicture& operator=(const LoadedPicture&) = delete;

    bool IsThere() const { return m_bitmap != nullptr; }
    int Width() const { return m_width; }
    int Height() const { return m_height; }

    void PaintOn(HDC surface, const CRect& at, DWORD operation) const {
        StretchBlt(surface, at.left, at.top, at.Width(), at.Height(), m_surface, 0, 0, m_width, m_height, operation);
    }

private:
    HBITMAP m_bitmap;
    HDC m_surface = nullptr;
    HGDIOBJ m_former = nullptr;
    int m_width = 0;
    int m_height = 0;
};

int LogMissing(const char* file) {
    melkar::LogText("DrawBmp LoadImageError[" + CString(file) + "]");
    return 0;
}

int DrawFilling(HDC surface, const CRect& box, const char* file, DWORD operation) {
    const LoadedPicture picture(surface, file, box.Width(), box.Height());
    if (!picture.IsThere())
        return LogMissing(file);
    picture.PaintOn(surface, box, operation);
    CString line;
    line.Format("RECT(%d,%d)[%d, %d]->BMP[%d, %d]", box.left, box.top, box.Width(), box.Height(), picture.Width(),
                picture.Height());
    melkar::LogText(line);
    return box.bottom;
}

int DrawFitted(HDC surface, const CRect& box, const char* file, DWORD operation, unsigned int alignment) {
    const LoadedPicture picture(surface, file, 0, 0);
    if (!picture.IsThere())
        return LogMissing(file);
    const float ratio = melkar::FitRatio(box, picture.Width(), picture.Height());
    const CRect at = melkar::PictureIn(box, picture.Width(), picture.Height(), ratio, alignment);
    picture.PaintOn(surface, at, operation);
    CString line;
    line.Format("RECT(%d,%d)[%d, %d] BMP[%d, %d]->[%d, %d] Ratio[%.3f]", box.left, box.top, box.Width(), box.Height(),
                picture.Width(), picture.Height(), at.Width(), at.Height(), double{ratio});
    melkar::LogText(line);
    return melkar::AddEdge(box.top, picture.Height());
}

} // namespace

int DrawBMP(HDC surface, CRect box, const char* file, unsigned long operation, int keepProportions,
            unsigned int alignment) {
    const auto how = static_cast<DWORD>(operation);
    try {
        return keepProportions != 0 ? DrawFitted(surface, box, file, how, alignment)
                                    : DrawFilling(surface, box, file, how);
    } catch (const std::exception& failure) {
        melkar::LogText(failure.what());
    } catch (...) {
        melkar::LogText("DrawBMP: exception");
    }
    return kFailed;
}

int DrawBMPTrans(HDC surface, CRect box, const char* first, const char* second, int keepProportions) {
    DrawBMP(surface, box, second, SRCPAINT, keepProportions, 0);
    return DrawBMP(surface, box, first, SRCAND, keepProportions, 0);
}
