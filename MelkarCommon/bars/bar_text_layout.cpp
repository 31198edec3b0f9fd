#include <MelkarCommon/bars/bar_text_layout.h>

#include <MelkarCommon/frame/frame_layout.h>

#include <cmath>

namespace melkar {

namespace {

constexpr double kCaptionRoom = 1.05; ///< of what a caption reaches down
constexpr double kCaptionGap = 0.5;   ///< between canvas and captions, in heights of a zero
constexpr int kPointerGap = 3;        ///< from the pointer to the balloon's text
constexpr int kBalloonRise = 6;       ///< how far the balloon's text ends above the pointer's gap
constexpr int kBalloonFrame = 3;      ///< around the text

} // namespace

TurnedExtent ExtentOf(const CRect& size, int escapement) {
    const double angle = escapement * 3.141592 / 1800;
    return {size.Width() * std::cos(angle) + size.Height() * std::sin(angle),
            size.Height() * std::cos(angle) + size.Width() * std::sin(angle)};
}

int CaptionRoom(const CRect& size, int escapement) { return Truncate(ExtentOf(size, escapement).down * kCaptionRoom); }

CPoint TurnedCaptionStart(const CRect& canvas, int middle, const TurnedExtent& extent) {
    return {middle - Truncate(extent.across) / 2, canvas.bottom + Truncate(extent.down)};
}

CRect CaptionBox(const CRect& canvas, int graphBottom, int day, int days, int zeroHeight) {
    return {SlotLeft(canvas, day, days) - canvas.Width(), Truncate(canvas.bottom + kCaptionGap * zeroHeight),
            SlotLeft(canvas, day + 1, days) + canvas.Width(), graphBottom};
}

CPoint DownwardLabelStart(const CRect& canvas, int graphRight, const CRect& size, double share, double gap) {
    return {Truncate(graphRight - size.Height() * share - gap), DownwardLabelY(canvas, size.Width())};
}

CRect BalloonStart(CPoint pointer, int width) {
    const int left = pointer.x + kPointerGap;
    const int top = pointer.y + kPointerGap;
    return {left, top, left + width, top};
}

BalloonBoxes BalloonOf(const CRect& measured) {
    CRect text = measured;
    text.OffsetRect(0, -(text.Height() + kBalloonRise));
    CRect frame = text;
    frame.DeflateRect(-kBalloonFrame, -kBalloonFrame);
    return {text, frame};
}

} // namespace melkar
