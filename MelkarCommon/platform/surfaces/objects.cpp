#include <MelkarCommon/platform/surfaces/objects.h>

#include <atomic>
#include <utility>

namespace melkar {

namespace {

std::atomic<std::size_t> g_alive{0};

} // namespace

void CountAlive(int difference) { g_alive += static_cast<std::size_t>(difference); }
std::size_t CountOfAlive() { return g_alive; }

GdiObject::GdiObject(ObjectKind objectKind, Owner objectOwner) : HandleHead(objectKind), owner(objectOwner) {
    if (owner == Owner::Caller)
        CountAlive(1);
}

GdiObject::~GdiObject() {
    if (owner == Owner::Caller)
        CountAlive(-1);
}

Pen::Pen(int penStyle, int penWidth, COLORREF penColor, Owner who)
    : GdiObject(ObjectKind::Pen, who), style(penStyle), width(penWidth), color(penColor) {}

Brush::Brush(COLORREF brushColor, bool isHollow, Owner who)
    : GdiObject(ObjectKind::Brush, who), color(brushColor), hollow(isHollow) {}

FontObject::FontObject(const LOGFONTA& font, Owner who) : GdiObject(ObjectKind::Font, who), description(font) {}

Region::Region(Shape regionShape) : GdiObject(ObjectKind::Region, Owner::Caller), shape(std::move(regionShape)) {}

Pen& StockPen(int index) {
    static Pen white(PS_SOLID, 1, RGB(255, 255, 255), Owner::Stock);
    static Pen black(PS_SOLID, 1, RGB(0, 0, 0), Owner::Stock);
    static Pen none(PS_NULL, 1, RGB(0, 0, 0), Owner::Stock);
    return index == WHITE_PEN ? white : index == NULL_PEN ? none : black;
}

Brush& StockBrush(int index) {
    // White, light grey, grey, dark grey, black: the brushes 0 to 4.
    static Brush greys[] = {{RGB(255, 255, 255), false, Owner::Stock},
                            {RGB(192, 192, 192), false, Owner::Stock},
                            {RGB(128, 128, 128), false, Owner::Stock},
                            {RGB(64, 64, 64), false, Owner::Stock},
                            {RGB(0, 0, 0), false, Owner::Stock}};
    static Brush none(RGB(0, 0, 0), true, Owner::Stock);
    if (index == NULL_BRUSH)
        return none;
    return greys[index >= WHITE_BRUSH && index <= BLACK_BRUSH ? index : WHITE_BRUSH];
}

FontObject& StockFont() {
    static FontObject font(LOGFONTA{}, Owner::Stock);
    return font;
}

} // namespace melkar
