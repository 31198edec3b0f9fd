#include <MelkarCommon/platform/geometry.h>

BOOL SetRect(RECT* rect, int left, int top, int right, int bottom) {
    if (!rect)
        return FALSE;
    *rect = {left, top, right, bottom};
    return TRUE;
}

BOOL CopyRect(RECT* to, const RECT* from) {
    if (!to || !from)
        return FALSE;
    *to = *from;
    return TRUE;
}

BOOL OffsetRect(RECT* rect, int dx, int dy) {
    if (!rect)
        return FALSE;
    CRect moved = *rect;
    moved.OffsetRect(dx, dy);
    *rect = moved;
    return TRUE;
}

int MulDiv(int number, int numerator, int denominator) {
    if (denominator == 0)
        return -1;
    const std::int64_t product = static_cast<std::int64_t>(number) * numerator;
    const std::int64_t magnitude = product < 0 ? -product : product;
    const std::int64_t divisor = denominator < 0 ? -static_cast<std::int64_t>(denominator) : denominator;
    const std::int64_t rounded = (magnitude + divisor / 2) / divisor;
    const std::int64_t quotient = (product < 0) != (denominator < 0) ? -rounded : rounded;
    return quotient == melkar::NearestInt(quotient) ? static_cast<int>(quotient) : -1;
}
