#pragma once

#include <MelkarCommon/support/platform/pixels/pending_fill.h>
#include <MelkarCommon/support/platform/pixels/pixel_spans.h>

/// @file
/// Internal. The ground of a picture: filled rows that wait until something is drawn on them. Rows are written from
/// the top down, as charts are drawn, so that one interval is enough to tell which still wait.

namespace melkar {

class PixelGround {
public:
    /// Without `pending` every fill is written at once.
    PixelGround(const PixelBuffer& buffer, PendingFill* pending) : m_buffer(buffer), m_pending(pending) {}

    /// `rect` lies within the picture.
    void Fill(const RECT& rect, Color color) {
        if (IsEmptyRect(rect))
            return;
        if (!m_pending)
            return FillRows(m_buffer, rect, color);
        const bool coversWidth = rect.left == 0 && rect.right == m_buffer.width;
        const bool coversPending =
            !m_pending->Any() || (rect.top <= m_pending->top && rect.bottom >= m_pending->bottom);
        if (coversWidth && coversPending) {
            *m_pending = {color, rect.top, rect.bottom};
            return;
        }
        WriteDownTo(rect.top);
        FillAround(rect);
        FillRows(m_buffer, rect, color);
    }

    /// Writes the waiting rows above `bottom`.
    void WriteDownTo(std::int64_t bottom) {
        if (!m_pending || !m_pending->Any() || bottom <= m_pending->top)
            return;
        const int end = static_cast<int>(std::min<std::int64_t>(bottom, m_pending->bottom));
        FillRows(m_buffer, {0, m_pending->top, m_buffer.width, end}, m_pending->color);
        m_pending->top = end;
    }

    void WriteAll() { WriteDownTo(m_buffer.height); }

private:
    /// Writes, of the waiting rows that `rect` crosses, what lies left and right of it.
    void FillAround(const RECT& rect) {
        if (!m_pending->Any() || rect.bottom <= m_pending->top)
            return;
        const int end = std::min(rect.bottom, m_pending->bottom);
        FillRows(m_buffer, {0, m_pending->top, rect.left, end}, m_pending->color);
        FillRows(m_buffer, {rect.right, m_pending->top, m_buffer.width, end}, m_pending->color);
        m_pending->top = std::max(m_pending->top, end);
    }

    const PixelBuffer& m_buffer;
    PendingFill* m_pending;
};

} // namespace melkar
