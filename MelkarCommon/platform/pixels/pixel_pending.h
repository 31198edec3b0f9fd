#pragma once

#include <MelkarCommon/platform/pixels/pending_fill.h>
#include <MelkarCommon/platform/pixels/pixel_spans.h>

/// @file
/// Internal. The ground of a picture: a fill that waits until something is drawn on it. Rows are written from the top
/// down, as charts are drawn, and frames are drawn along the edges, so that one rectangle is enough to tell what still
/// waits.

namespace melkar {

class PixelGround {
public:
    /// Without `pending` every fill is written at once.
    PixelGround(const PixelBuffer& buffer, PendingFill* pending) : m_buffer(buffer), m_pending(pending) {}

    /// `rect` lies within the picture.
    void Fill(const RECT& rect, Color color) {
        if (IsEmptyRect(rect))
            return;
        if (m_pending && CanWait(rect)) {
            *m_pending = {color, rect};
            return;
        }
        MakeWay(rect);
        FillRows(m_buffer, rect, color);
    }

    /// For whoever writes all of `rect`.
    void MakeWay(const RECT& rect) {
        if (m_pending && !TakeOut(rect))
            WriteAround(rect);
    }

    /// Writes the waiting rows above `bottom`.
    void WriteDownTo(std::int64_t bottom) {
        if (!m_pending || IsEmptyRect(m_pending->rect) || bottom <= m_pending->rect.top)
            return;
        RECT rows = m_pending->rect;
        rows.bottom = static_cast<int>(std::min<std::int64_t>(bottom, rows.bottom));
        FillRows(m_buffer, rows, m_pending->color);
        m_pending->rect.top = rows.bottom;
    }

    void WriteAll() { WriteDownTo(m_buffer.height); }

private:
    /// What covers all that waits takes its place. If nothing waits, whole rows do.
    bool CanWait(const RECT& rect) const {
        const RECT& rest = m_pending->rect;
        if (IsEmptyRect(rest))
            return rect.left == 0 && rect.right == m_buffer.width;
        return rect.left <= rest.left && rect.right >= rest.right && rect.top <= rest.top && rect.bottom >= rest.bottom;
    }

    /// Takes what `rect` covers out of what waits. @return false, with nothing done, if that leaves no rectangle.
    bool TakeOut(const RECT& rect) {
        RECT& rest = m_pending->rect;
        const RECT common = ClipBox(ToBox(rect), rest);
        const bool allColumns = common.left == rest.left && common.right == rest.right;
        const bool allRows = common.top == rest.top && common.bottom == rest.bottom;
        if (IsEmptyRect(common))
            return true;
        if (allColumns && common.top == rest.top)
            rest.top = common.bottom;
        else if (allColumns && common.bottom == rest.bottom)
            rest.bottom = common.top;
        else if (allRows && common.left == rest.left)
            rest.left = common.right;
        else if (allRows && common.right == rest.right)
            rest.right = common.left;
        else
            return false;
        return true;
    }

    /// Writes the waiting rows down to the end of `rect`, but for what it covers of them.
    void WriteAround(const RECT& rect) {
        WriteDownTo(rect.top);
        RECT& rest = m_pending->rect;
        const int end = std::min(rect.bottom, rest.bottom);
        FillRows(m_buffer, {rest.left, rest.top, rect.left, end}, m_pending->color);
        FillRows(m_buffer, {rect.right, rest.top, rest.right, end}, m_pending->color);
        rest.top = end;
    }

    const PixelBuffer& m_buffer;
    PendingFill* m_pending;
};

} // namespace melkar
