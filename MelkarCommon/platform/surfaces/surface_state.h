#pragma once

#include <MelkarCommon/platform/pages/page_file.h>
#include <MelkarCommon/platform/seam/backend.h>
#include <MelkarCommon/platform/surfaces/picture.h>
#include <MelkarCommon/platform/text/text_engine.h>
#include <MelkarCommon/platform/types.h>

#include <memory>
#include <vector>

namespace melkar {

/// What a line's stroke depends on, on one surface.
struct LineLook {
    int style;
    int width;
    COLORREF color;
    int bkMode;
    COLORREF bkColor;

    bool operator==(const LineLook&) const = default;
};

/// Lines that wait to be drawn as one path, so that their corners are whole and an outline is one stroke.
struct WaitingLines {
    std::vector<POINT> points; ///< empty: none wait
    LineLook look{};
    Stroke stroke;

    /// True if a line from `from` of this look goes on where they end. Where they end, so does their pattern.
    bool GoOnAt(POINT from, const LineLook& next) const;
};

/// What the surface of a printer keeps; the printer calls know what it is.
class SurfacePrinting {
public:
    virtual ~SurfacePrinting() = default;
};

} // namespace melkar

/// A drawing surface: the selected objects and modes, above the backend that does the work. Internal.
struct HDC__ : melkar::HandleHead, melkar::InHandleMemory<melkar::ObjectKind::Surface> {
    explicit HDC__(const melkar::Device& surfaceDevice);
    ~HDC__();
    HDC__(const HDC__&) = delete;
    HDC__& operator=(const HDC__&) = delete;

    /// Draws on `picture` from now on. @return the former one, null if this one is selected elsewhere.
    melkar::Bitmap* Take(melkar::Bitmap& picture);
    /// The pixels, of which some may wait to be written; null without any.
    melkar::PixelPicture* Pixels();
    /// The backend with every line on it that was drawn, for whatever comes next; null without room to draw on.
    melkar::Backend* Drawing();
    /// Adds a line of the selected pen to those that wait.
    void AddLine(POINT from, POINT to);
    void FlushLines();
    bool HasRoom() { return BackendBelow() != nullptr; }
    /// The face of `font`; one without a height is as large as 12 pixels are at 96 dpi. Looked up each time and never
    /// kept: a face is its thread's, a surface may go to another.
    std::shared_ptr<melkar::TextFace> Face() const;
    melkar::Backend* BackendBelow();

    const melkar::Device device;
    RECT bounds{0, 0, 0, 0}; ///< of the room to draw on

    melkar::Pen* pen;
    melkar::Brush* brush;
    melkar::FontObject* font;
    melkar::Bitmap* bitmap = nullptr;          ///< null on a page
    std::unique_ptr<melkar::Bitmap> ownBitmap; ///< of a surface with room of its own
    std::unique_ptr<melkar::Backend> backend;  ///< of a page; null outside of a document. To draw, take `Drawing()`
    melkar::WaitingLines lines;
    melkar::PageFile* page = nullptr; ///< the backend, if it is a page that is finished with the surface
    std::unique_ptr<melkar::SurfacePrinting> printing; ///< null on what isn't a printer's

    COLORREF textColor = RGB(0, 0, 0);
    COLORREF bkColor = RGB(255, 255, 255);
    int bkMode = OPAQUE;
    POINT position{0, 0};
    double patternPhase = 0; ///< device units gone since the last `MoveToEx`
};

namespace melkar {

/// False for null, for a handle of another kind and for a deleted one: nothing of these may be touched.
inline bool IsSurface(HDC handle) { return handle && handle->kind == ObjectKind::Surface; }
/// That of a screen without room for what is no surface.
inline Device DeviceOf(HDC handle) { return IsSurface(handle) ? handle->device : Device{}; }

} // namespace melkar
