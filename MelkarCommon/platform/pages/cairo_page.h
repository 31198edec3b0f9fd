#pragma once

#include <MelkarCommon/platform/cairo/handles.h>
#include <MelkarCommon/platform/cairo/shapes.h>
#include <MelkarCommon/platform/pages/ink.h>
#include <MelkarCommon/platform/pages/page_file.h>
#include <MelkarCommon/platform/seam/box.h>

/// @file
/// Internal. A page that a context of cairo's draws.

namespace melkar {

/// The verbs on a context, whatever it draws on: everything stays a vector, and covers the area that it would cover on
/// pixels. cairo keeps what is drawn, 800 bytes for each shape or text, until its page ends; so a page with more than
/// anybody could read becomes a picture from there on.
class CairoPage : public PageFile {
public:
    void SetClip(const RECT& clip) override;
    void FillRect(const RECT& rect, Color color) override;
    void FillFramed(const RECT& outer, int width, Color frame, std::optional<Color> ground) override;
    void FillShape(const Shape& shape, Color color) override;
    void StrokeShape(const Shape& shape, const Stroke& stroke) override;
    void StrokePolyline(std::span<const POINT> points, const Stroke& stroke) override;
    void PaintText(const std::shared_ptr<const TextLayout>& layout, std::size_t line, POINT at, int escapement,
                   Color color, const RECT& clip) override;
    void Blit(const RECT& target, const PixelBuffer& pixels, const RECT& source, DWORD operation) override;

protected:
    /// @param cr counts in units of the room, and clips to what it may draw on
    CairoPage(CairoContext cr, const RECT& room, int dpi);

    bool HasRoom() const { return !IsEmptyRect(m_page); }
    /// Nothing was drawn on this page.
    bool IsBlank() const { return m_count == 0; }
    /// All of the room is to be drawn on.
    void OpenRoom();
    /// Nothing of it, once everything is drawn.
    void CloseRoom();
    /// The same without what waits.
    void LeaveRoom();
    /// The context is as it was given, for good.
    void GiveBack() {
        cairo_restore(m_cr.get());
        cairo_restore(m_cr.get());
    }
    cairo_t* Context() { return m_cr.get(); }
    /// What waits is drawn.
    void FinishLines();

private:
    cairo_t* Cr() { return m_picture != nullptr ? m_picture.get() : m_cr.get(); }
    /// Whether anything is drawn at all; between two pages the clip is empty.
    bool Shows() {
        FinishLines();
        Count();
        return !IsEmptyRect(m_clip);
    }
    /// One more shape or text.
    void Count();
    void BeginPicture();
    void EndPicture();
    /// What the pen draws with.
    auto Ink() {
        return Overloaded{
            [this](const PaperLine& line, const Stroke& stroke) { StrokeLine(line, stroke); },
            [this](const PolygonShape& polygon, Color color) { FillShapeOn(Cr(), m_clip, polygon, color); },
        };
    }
    void StrokeLine(const PaperLine& line, const Stroke& stroke);
    void ClipTo(const RECT& clip);
    void Rectangle(const RECT& r);
    void Rectangle(const Area& area);

    CairoContext m_cr;
    RECT m_room;             ///< to draw on
    RECT m_page{0, 0, 0, 0}; ///< the room while it is open, else empty
    RECT m_clip{0, 0, 0, 0};
    int m_dpi;
    double m_scale; ///< of what the context draws on, in a device unit
    PaperPen m_pen;
    int m_count = 0;        ///< of shapes and texts on this page
    CairoContext m_picture; ///< draws what is too much for it; else null
};

} // namespace melkar
