// One picture with every drawing call, on each kind of surface: a record tells what was asked for, pixels what came of
// it, and the page has to look like the pixels.

#include <MelkarCommon/platform/tests/surface.h>
#include <MelkarCommon/platform/tests/temp_workdir.h>

#include <MelkarCommon/platform/cairo/handles.h>
#include <MelkarCommon/platform/geometry.h>
#include <MelkarCommon/platform/host_surfaces.h>
#include <MelkarCommon/platform/printing.h>
#include <MelkarCommon/platform/tests/framed.h>
#include <MelkarCommon/platform/tracing.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <vector>

namespace {

using melkar::ScopedBrush;
using melkar::ScopedObject;
using melkar::ScopedPen;
using melkar::ScopedSelection;

constexpr int kWidth = 320;
constexpr int kHeight = 240;
// The three channels of a colour are far apart.
constexpr COLORREF kRust = RGB(200, 80, 20);
constexpr COLORREF kSea = RGB(20, 90, 160);
constexpr COLORREF kSun = RGB(250, 200, 90);

void DrawRoundShapes(HDC s) {
    const ScopedBrush brush(s, kSea);
    {
        const ScopedPen pen(s, PS_SOLID, 4, kRust);
        Ellipse(s, 70, 50, 10, 10);                 // edges the wrong way round
        Ellipse(s, 283, 10, 297, 24);               // small
        Pie(s, 80, 10, 140, 50, 150, 30, 110, 0);   // from the right to the top
        Pie(s, 150, 10, 210, 50, 180, 50, 150, 30); // from the bottom round to the left
    }
    SelectObject(s, GetStockObject(NULL_PEN));
    Pie(s, 220, 10, 280, 50, 300, 30, 300, 30); // equal radials: all of it
    Ellipse(s, 300, -100000, 200300, 100240);   // an edge that is hardly bent, far beyond cairo's numbers
    SelectObject(s, GetStockObject(BLACK_PEN));
}

void DrawRectanglesAndRegions(HDC s) {
    const ScopedBrush brush(s, kSun);
    {
        const ScopedPen pen(s, PS_DASH, 0, kRust);
        Rectangle(s, 10, 60, 70, 100);
        const ScopedSelection hollow(s, GetStockObject(NULL_BRUSH));
        const ScopedPen thick(s, PS_INSIDEFRAME, 5, kSea);
        Rectangle(s, 80, 60, 140, 100);
    }
    const POINT star[] = {{180, 60}, {200, 100}, {150, 75}, {210, 75}, {160, 100}};
    const POINT twice[] = {{0, 230}, {1 << 30, 230}, {0, 1 << 30}, {0, 230}, {1 << 30, 230}, {0, 1 << 30}};
    const POINT dart[] = {{290, 60}, {298, 100}, {282, 100}};
    const POINT profile[] = {{205, 160}, {205, 130}, {210, 110}, {213, 150}, {220, 105}, {230, 140}, {236, 160}};
    const LOGBRUSH description{BS_SOLID, kRust, 0};
    HBRUSH rust = CreateBrushIndirect(&description);
    for (HRGN region : {CreatePolygonRgn(star, 5, ALTERNATE), CreatePolygonRgn(twice, 6, WINDING),
                        CreatePolygonRgn(dart, 3, ALTERNATE), CreatePolygonRgn(profile, 7, ALTERNATE)}) {
        FillRgn(s, region, rust);
        DeleteObject(region);
    }
    DeleteObject(rust);
}

/// A closed frame and a zigzag, both as wide as their corners show.
void DrawPaths(HDC s) {
    const ScopedPen pen(s, PS_SOLID, 6, kRust);
    MoveToEx(s, 250, 170, nullptr);
    for (const POINT& to : {POINT{300, 170}, {300, 190}, {250, 190}, {250, 170}})
        LineTo(s, to.x, to.y);
    MoveToEx(s, 250, 200, nullptr);
    for (const POINT& to : {POINT{265, 222}, {280, 200}, {295, 222}})
        LineTo(s, to.x, to.y);
}

void DrawLines(HDC s) {
    const LOGBRUSH description{BS_SOLID, kSea, 0};
    const ScopedObject pen(s, ExtCreatePen(PS_GEOMETRIC | PS_SOLID, 6, &description, 0, nullptr));
    MoveToEx(s, 220, 65, nullptr);
    LineTo(s, 280, 95);
    const ScopedPen dashes(s, PS_DASH, 5, kRust);
    SetBkColor(s, kSun); // of the gaps
    LineTo(s, 220, 85);
    MoveToEx(s, 10, 220, nullptr);
    LineTo(s, 140, 220);
}

/// Left half rust, right half white.
void DrawPicture(HDC s, HBITMAP picture) {
    BITMAP size{};
    EXPECT_NE(GetObjectA(picture, sizeof size, &size), 0);
    EXPECT_EQ(size.bmWidth * 100 + size.bmHeight, 2010);
    DrawFramed(s, RECT{80, 110, 130, 140}, 0, 0, 1);
    const Surface source(CreateCompatibleDC(s));
    const ScopedSelection selected(source, picture);
    BitBlt(s, 10, 110, 20, 10, source, 0, 0, SRCCOPY);
    StretchBlt(s, 40, 110, 30, 30, source, 0, 0, 20, 10, SRCAND);
    StretchBlt(s, 80, 110, 50, 30, source, 0, 0, 20, 10, SRCPAINT);
    BitBlt(s, 140, 110, 20, 10, source, -5, 0, SRCCOPY); // fifteen columns of it
    BitBlt(s, 170, 110, 20, 10, source, 0, 0, SRCAND);
}

void DrawTexts(HDC s) {
    SetTextColor(s, kSea);
    for (const auto& [escapement, x, y] : {std::array{0, 10, 150}, {900, 90, 215}, {2700, 290, 110}, {300, 170, 190}}) {
        const ScopedObject font(s, CreateFontA(-40, 0, escapement, 0, FW_BOLD, 0, 0, 0, 0, 0, 0, 0, 0, "DejaVu Sans"));
        TextOutA(s, x, y, "HI歩", 4); // not half a character
        SetBkMode(s, TRANSPARENT);
    }
}

/// Whether no channel differs by more than 3, and neither is transparent.
bool AreClose(std::uint32_t one, std::uint32_t other) {
    for (unsigned shift = 0; shift < 32; shift += 8)
        if (std::abs(static_cast<int>(one >> shift & 0xFFU) - static_cast<int>(other >> shift & 0xFFU)) > 3)
            return false;
    return true;
}

class EveryCall : public testing::Test {
protected:
    EveryCall() {
        const Surface picture(CreateMemorySurface(20, 10));
        DrawFramed(picture, RECT{0, 0, 10, 10}, kRust, kRust, 1);
        EXPECT_EQ(WritePng(picture, "picture.png"), 0);
        DrawOn(m_pixels);
    }

    static HBITMAP Load(const char* path) {
        return static_cast<HBITMAP>(LoadImageA(nullptr, path, IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE));
    }
    static void DrawOn(HDC s) {
        HBITMAP picture = Load("picture.png");
        DrawRoundShapes(s);
        DrawRectanglesAndRegions(s);
        DrawLines(s);
        DrawPicture(s, picture);
        DrawTexts(s);
        DrawPaths(s); // they wait: whatever ends a drawing draws them
        DeleteObject(picture);
    }
    /// Whether a pixel and all around it are of one colour, so that no edge runs there.
    bool IsPlain(int x, int y) const {
        bool plain = true;
        for (int i = 0; i < 9; ++i)
            plain = plain && m_pixels.At(x + i % 3 - 1, y + i / 3 - 1) == m_pixels.At(x, y);
        return plain;
    }

    /// Away from edges, whose smoothing differs.
    void ExpectLikePixels(const char* path, const char* what) const {
        HBITMAP printed = Load(path);
        BITMAP shown{};
        GetObjectA(printed, sizeof shown, &shown);
        ASSERT_EQ(shown.bmWidth * 1000 + shown.bmHeight, kWidth * 1000 + kHeight) << what;
        const auto* pixels = static_cast<const std::uint32_t*>(shown.bmBits);
        for (int y = 1; y < kHeight - 1; ++y)
            for (int x = 1; x < kWidth - 1; ++x)
                EXPECT_TRUE(!IsPlain(x, y) || AreClose(pixels[y * shown.bmWidthBytes / 4 + x], m_pixels.At(x, y)))
                    << what << " " << x << "," << y;
        DeleteObject(printed);
    }

    TempWorkdir m_work;
    const Surface m_pixels{CreateMemorySurface(kWidth, kHeight)};
};

TEST_F(EveryCall, IsRecorded) {
    const Surface record(CreateRecordingSurface(kWidth, kHeight));
    DrawOn(record);
    EXPECT_EQ(GetRecording(record), R"(ellipse 40,30 30x20 fill #145AA0
ellipse 40,30 28x18 stroke #C85014 w4
ellipse 290,17 7x7 fill #145AA0
ellipse 290,17 5x5 stroke #C85014 w4
slice 110,30 30x20 from 0 sweep 90 fill #145AA0
slice 110,30 28x18 from 0 sweep 90 stroke #C85014 w4
slice 180,30 30x20 from -90 sweep 270 fill #145AA0
slice 180,30 28x18 from -90 sweep 270 stroke #C85014 w4
ellipse 250,30 30x20 fill #145AA0
ellipse 100300,120 100000x100120 fill #145AA0
fill 10,60 60x40 #FAC85A
line 10,60 69,60 #C85014 w1 dash 18,6 gaps #FFFFFF
line 69,60 69,99 #C85014 w1 dash 18,6 phase 59 gaps #FFFFFF
line 69,99 10,99 #C85014 w1 dash 18,6 phase 98 gaps #FFFFFF
line 10,99 10,60 #C85014 w1 dash 18,6 phase 157 gaps #FFFFFF
fill 80,60 60x5 #145AA0
fill 80,95 60x5 #145AA0
fill 80,65 5x30 #145AA0
fill 135,65 5x30 #145AA0
polygon 180,60 200,100 150,75 210,75 160,100 fill #C85014
polygon 0,230 1073741824,230 0,1073741824 0,230 1073741824,230 0,1073741824 winding fill #C85014
polygon 290,60 298,100 282,100 fill #C85014
polygon 205,160 205,130 210,110 213,150 220,105 230,140 236,160 fill #C85014
line 220,65 280,95 #145AA0 w6
line 280,95 220,85 #C85014 w5 dash 18,6 gaps #FAC85A
line 10,220 140,220 #C85014 w5 dash 18,6 gaps #FAC85A
fill 80,110 50x30 #000000
image 10,110 20x10 from 20x10
image 40,110 30x30 from 20x10 and
image 80,110 50x30 from 20x10 or
image 145,110 15x10 from 15x10
image 170,110 20x10 from 20x10 and
fill 10,150 48x50 #FAC85A
text "HI" 10,150 48x50 "DejaVu Sans 40 bold" #145AA0
text "HI" 90,215 48x50 "DejaVu Sans 40 bold" #145AA0 angle 900
text "HI" 290,110 48x50 "DejaVu Sans 40 bold" #145AA0 angle 2700
text "HI" 170,190 48x50 "DejaVu Sans 40 bold" #145AA0 angle 300
line 250,170 300,170 #C85014 w6
line 300,170 300,190 #C85014 w6
line 300,190 250,190 #C85014 w6
line 250,190 250,170 #C85014 w6
line 250,200 265,222 #C85014 w6
line 265,222 280,200 #C85014 w6
line 280,200 295,222 #C85014 w6
)");
}

/// What drew on a pixel last has given it the colour that it has in the picture, edges and glyphs included.
TEST_F(EveryCall, IsTracedToEachPixel) {
    constexpr int kApart = 5;
    const Surface trace(CreateTracingSurface(kWidth, kHeight));
    DrawOn(trace);
    for (int y = 0; y < kHeight; y += kApart)
        for (int x = 0; x < kWidth; x += kApart) {
            const std::vector<melkar::PixelLayer> layers = melkar::LayersAt(trace, {x, y});
            const COLORREF color = layers.empty() ? melkar::kWhite : layers.back().color;
            const std::uint32_t pixel = m_pixels.At(x, y);
            ASSERT_EQ(color, RGB(pixel >> 16U & 0xFFU, pixel >> 8U & 0xFFU, pixel & 0xFFU)) << x << "," << y;
        }
}

TEST_F(EveryCall, FitsMemoryOfTheHost) {
    for (const double scale : {1.0, 1.5, 2.0}) {
        const int width = static_cast<int>(kWidth * scale);
        const int height = static_cast<int>(kHeight * scale);
        const int stride = width + 3;
        std::vector<std::uint32_t> memory(static_cast<std::size_t>(stride * height), 0xFFFFFFFFU);
        const Surface wrapped(WrapScaledPixels(memory.data(), kWidth, kHeight, stride * 4, scale));
        const Surface own(CreateScaledSurface(kWidth, kHeight, scale));
        DrawOn(wrapped);
        DrawOn(own);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < stride; ++x)
                ASSERT_TRUE(
                    AreClose(memory[static_cast<std::size_t>(y * stride + x)], x < width ? own.At(x, y) : 0xFFFFFFFFU))
                    << x << "," << y << " at " << scale;
    }
}

TEST_F(EveryCall, LooksTheSameOnAPage) {
    const std::tuple<const char*, PageFormat, const char*> cases[] = {
        {"page.pdf", PageFormat::Pdf, "pdftoppm -singlefile -r 96 -png page.pdf page"},
        {"page.svg", PageFormat::Svg, "rsvg-convert -o page.png page.svg"},
        {"outlines.svg", PageFormat::SvgOutlines, "rsvg-convert -o page.png outlines.svg"},
    };
    for (const auto& [name, format, render] : cases) {
        const HDC page = CreatePageSurface(name, format, kWidth, kHeight, 96);
        EXPECT_EQ(GetDeviceCaps(page, HORZRES) * 1000 + GetDeviceCaps(page, VERTRES), kWidth * 1000 + kHeight);
        DrawOn(page);
        DeleteDC(page);
        ASSERT_EQ(std::system(render), 0);
        ExpectLikePixels("page.png", name);
    }
}

// A turned one, on which points know no way; turned back it is compared.
TEST_F(EveryCall, LooksTheSameOnAContextOfTheHost) {
    cairo_matrix_t turn{0, 1, -1, 0, kHeight, 0};
    const melkar::CairoSurface turned(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kHeight, kWidth));
    const melkar::CairoContext cr(cairo_create(turned.get()));
    cairo_set_source_rgb(cr.get(), 1, 1, 1);
    cairo_paint(cr.get());
    cairo_set_matrix(cr.get(), &turn);
    const HDC context = melkar::CreateContextSurface(cr.get(), kWidth, kHeight);
    DrawOn(context);
    EXPECT_TRUE(DeleteDC(context));
    const melkar::CairoSurface upright(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight));
    const melkar::CairoContext back(cairo_create(upright.get()));
    cairo_matrix_invert(&turn);
    cairo_set_matrix(back.get(), &turn);
    cairo_set_source_surface(back.get(), turned.get(), 0, 0);
    cairo_paint(back.get());
    ASSERT_EQ(cairo_surface_write_to_png(upright.get(), "page.png"), CAIRO_STATUS_SUCCESS);
    ExpectLikePixels("page.png", "a turned context");
}

TEST_F(EveryCall, LooksTheSameOnASecondSheet) {
    const DOCINFOA job{sizeof job, "Every call", nullptr, nullptr, 0};
    const HDC sheets = CreateDCA("WINSPOOL", "sheets.pdf", nullptr, nullptr);
    StartDocA(sheets, &job);
    StartPage(sheets);
    DrawFramed(sheets, RECT{0, 0, kWidth, kHeight}, kSea, kSea, 1);
    StartPage(sheets);
    DrawOn(sheets);
    EXPECT_GT(EndDoc(sheets), 0);
    DeleteDC(sheets);
    ASSERT_EQ(std::system("pdftoppm -f 2 -singlefile -r 96 -W 320 -H 240 -png sheets.pdf page"), 0);
    ExpectLikePixels("page.png", "a sheet");
}

} // namespace
