// Coordinates at the edges of an int, at every door. Whether anything overflows is for the sanitizers to see; what is
// drawn there must not show on the surface, and what covers it has to.

#include <MelkarCommon/platform/tests/surface.h>
#include <MelkarCommon/platform/tests/temp_workdir.h>

#include <MelkarCommon/platform/scoped.h>

#include <gtest/gtest.h>

#include <climits>

namespace {

using melkar::ScopedFont;
using melkar::ScopedPen;

/// Every call with four coordinates.
void DrawAll(HDC s, HDC from, const RECT& r) {
    MoveToEx(s, r.left, r.top, nullptr);
    LineTo(s, r.right, r.bottom);
    LineTo(s, r.right, r.top);
    Rectangle(s, r.left, r.top, r.right, r.bottom);
    Ellipse(s, r.left, r.top, r.right, r.bottom);
    Pie(s, r.left, r.top, r.right, r.bottom, r.bottom, r.left, r.top, r.right);
    const POINT corners[] = {{r.left, r.top}, {r.right, r.bottom}, {r.bottom, r.left}};
    HRGN region = CreatePolygonRgn(corners, 3, WINDING);
    FillRgn(s, region, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    DeleteObject(region);
    for (const DWORD operation : {SRCCOPY, SRCAND}) {
        BitBlt(s, r.left, r.top, r.right, r.bottom, from, r.bottom, r.left, operation);
        BitBlt(s, r.left, r.top, r.right, r.bottom, s, r.bottom, r.left, operation);
        StretchBlt(s, r.left, r.top, r.right, r.bottom, from, r.right, r.top, r.bottom, r.right, operation);
        StretchBlt(s, r.left, r.top, r.right, 9, from, 0, 0, 9, r.bottom, operation);
    }
    char text[] = "A text\nin lines";
    TextOutA(s, r.left, r.top, text, -1);
    for (const UINT format : {DT_RIGHT | DT_WORDBREAK, DT_CENTER | DT_VCENTER | DT_SINGLELINE,
                              DT_BOTTOM | DT_SINGLELINE, DT_CALCRECT | DT_WORDBREAK, DT_CALCRECT | DT_SINGLELINE}) {
        RECT box = r;
        DrawTextExA(s, text, -1, &box, format, nullptr);
    }
}

void DrawAtEdges(HDC s, HDC from) {
    constexpr int kEdges[] = {INT_MIN, -7, 9, INT_MAX};
    for (const int a : kEdges)
        for (const int b : kEdges)
            for (const int c : kEdges)
                for (const int d : kEdges)
                    DrawAll(s, from, {a, b, c, d});
}

TEST(Bounds, CallsTakeAnyCoordinates) {
    const TempWorkdir work;
    const Surface pixels(CreateMemorySurface(16, 16));
    const Surface record(CreateRecordingSurface(16, 16));
    LineTo(record, 9, 9);
    for (HDC made :
         {CreateMemorySurface(20, 20, 192), CreateMemorySurface(20, 20, INT_MAX), CreateScaledSurface(20, 20, 1.25),
          CreateRecordingSurface(20, 20, INT_MAX), CreatePageSurface("page.svg", PageFormat::Svg, 20, 20, 1),
          CreatePageSurface("page.pdf", PageFormat::Pdf, 20, 20, 300)}) {
        const Surface surface(made);
        for (const auto& [style, width] : {std::pair{PS_SOLID, 3}, {PS_DASH, 1}, {PS_INSIDEFRAME, INT_MAX}}) {
            const ScopedPen pen(surface, style, width, RGB(9, 9, 9));
            const ScopedFont font(surface, CreateFontA(-9, 0, 300, 0, 400, 0, 0, 0, 0, 0, 0, 2, 0, "DejaVu Sans"));
            DrawAtEdges(surface, pixels);
            DrawAtEdges(surface, record);
        }
        const ScopedPen white(surface, PS_SOLID, 3, RGB(255, 255, 255));
        Rectangle(surface, INT_MAX, INT_MAX, INT_MIN, INT_MIN); // grown by half its pen
        EXPECT_TRUE(GetPixels(surface).pixels == nullptr || surface.At(0, 19) == 0xFFFFFFFFU);
    }
}

} // namespace
