#pragma once

#include <MelkarCommon/platform/seam/backend.h>
#include <MelkarCommon/platform/surfaces/target.h>
#include <MelkarCommon/platform/surfaces/waiting_lines.h>
#include <MelkarCommon/platform/text/text_engine.h>
#include <MelkarCommon/platform/types.h>

#include <memory>
#include <span>
#include <vector>

/// A drawing surface: the selected objects and modes, above what does the work. Internal.
struct HDC__ : melkar::HandleHead, melkar::InHandleMemory<melkar::ObjectKind::Surface> {
    template <class Kind, class... Arguments>
    HDC__(const melkar::Device& surfaceDevice, std::in_place_type_t<Kind> kind, Arguments&&... arguments)
        : HandleHead(melkar::ObjectKind::Surface), device(surfaceDevice),
          target(kind, std::forward<Arguments>(arguments)...) {
        melkar::CountAlive(1);
    }
    ~HDC__() { melkar::CountAlive(-1); }
    HDC__(const HDC__&) = delete;
    HDC__& operator=(const HDC__&) = delete;

    /// The backend with every line on it that was drawn, for whatever comes next; null without room to draw on.
    melkar::Backend* Drawing();
    /// The picture with every line on it, for a look or a copy; null if it draws on none.
    melkar::Picture* Shown();
    /// Of the room to draw on.
    RECT Bounds() const;
    /// A line of the selected pen, which may wait. @return false without room to draw on
    bool AddLine(POINT from, POINT to);
    /// Further points of the path that ends at the position: as many as can wait. @return how many; throws with none
    /// added
    std::size_t AddMore(std::span<const POINT> points);
    void FlushLines();
    melkar::LineLook LineLookNow() const { return {pen->style, pen->width, pen->color, bkMode, bkColor}; }
    void DrawLines();
    /// The face of the font; one without a height is as large as 12 pixels are at 96 dpi. Looked up each time and never
    /// kept: a face is its thread's, a surface may go to another.
    const std::shared_ptr<melkar::TextFace>& Face() const;

    const melkar::Device device;
    melkar::Target target;

    melkar::Selected<melkar::Pen> pen{melkar::StockPen(BLACK_PEN)};
    melkar::Selected<melkar::Brush> brush{melkar::StockBrush(WHITE_BRUSH)};
    melkar::Selected<melkar::FontObject> font{melkar::StockFont()};
    COLORREF textColor = RGB(0, 0, 0);
    COLORREF bkColor = RGB(255, 255, 255);
    int bkMode = OPAQUE;

    melkar::WaitingLines lines;
    const melkar::StepName* linesStep = nullptr; ///< that began them, if the surface is traced
    POINT position{0, 0};
};

namespace melkar {

/// False for null, for a handle of another kind and for a deleted one: nothing of these may be touched.
inline bool IsSurface(HDC handle) { return handle && handle->kind == ObjectKind::Surface; }
/// That of a screen without room for what is no surface.
inline Device DeviceOf(HDC handle) { return IsSurface(handle) ? handle->device : Device{}; }

} // namespace melkar
