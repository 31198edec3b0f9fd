// A compatible bitmap is drawn on before it has pixels: whatever is done with it, it must look as if it had had them
// from the first call on.

#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/platform/tests/surface.h>

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int kSide = 90;
constexpr int kManyDiscs = 12000; ///< more than a draft keeps, half of them fewer

void DrawDiscs(HDC to, int count) {
    for (int i = 0; i < count; ++i) {
        const melkar::ScopedBrush brush(to, RGB(i % 256, i / 256, 100));
        const melkar::ScopedPen none(to, PS_NULL, 0, 0);
        const int x = i % kSide;
        const int y = i / kSide % kSide;
        Ellipse(to, x, y, x + 3, y + 3);
    }
}

/// Through (30, 20).
void DrawLines(HDC to) {
    const melkar::ScopedPen pen(to, PS_SOLID, 3, RGB(200, 40, 40));
    MoveToEx(to, 3, 20, nullptr);
    LineTo(to, 60, 20);
    LineTo(to, 80, 44);
}

/// Something of each verb; some of it reaches beyond the picture.
void DrawAll(HDC to) {
    const melkar::ScopedPen pen(to, PS_SOLID, 3, RGB(200, 40, 40));
    const melkar::ScopedBrush brush(to, RGB(90, 160, 220));
    Ellipse(to, 10, 10, 70, 60);
    Pie(to, -20, 40, 50, 110, 40, 40, 0, 100);
    MoveToEx(to, 0, 80, nullptr);
    LineTo(to, 40, 20);
    LineTo(to, 120, 75);
    const melkar::ScopedFont font(to, CreateFontA(-13, 0, 0, 0, 400, 0, 0, 0, 1, 0, 0, 2, 0, "DejaVu Sans"));
    for (const char* text : {"1234", "5678 kcal"})
        TextOutA(to, 30, 30, text, -1);
}

/// Rectangles, level and sloped lines and texts across each other: so few that what is left meets some, not all.
void DrawAcross(HDC to, unsigned seed) {
    std::mt19937 random(seed);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    const melkar::ScopedFont font(to, CreateFontA(-11, 0, 0, 0, 400, 0, 0, 0, 1, 0, 0, 2, 0, "DejaVu Sans"));
    const melkar::ScopedBkMode transparent(to, TRANSPARENT);
    const melkar::ScopedTextColor white(to, RGB(255, 255, 255));
    for (int i = 0; i < 7; ++i) {
        const int x = below(kSide);
        const int y = below(kSide);
        const COLORREF color = RGB(below(3) * 100, 0, 90);
        const melkar::ScopedPen pen(to, below(4) == 0 ? PS_DOT : PS_SOLID, 1 + below(3), color);
        const melkar::ScopedBrush brush(to, color);
        RECT box{x, y, x + 1 + below(40), y + 1 + below(30)};
        switch (below(4)) {
        case 0:
            Rectangle(to, box.left, box.top, box.right, box.bottom);
            break;
        case 1:
            MoveToEx(to, x, y, nullptr), LineTo(to, x, box.bottom);
            break;
        case 2:
            MoveToEx(to, x, y, nullptr), LineTo(to, box.right, box.bottom);
            break;
        default:
            DrawTextExA(to, std::string("12j").data(), -1, &box, DT_SINGLELINE, nullptr);
        }
    }
}

/// Two lines a pixel apart, which would close up if the rectangle didn't come between.
void DrawLinesApart(HDC to) {
    const melkar::ScopedPen pen(to, PS_SOLID, 1, RGB(200, 40, 40));
    for (int x : {20, 21}) {
        MoveToEx(to, x, 20, nullptr);
        LineTo(to, x + 10, 60);
        const melkar::ScopedBrush brush(to, RGB(9, 9, 9));
        Rectangle(to, 70, 70, 80, 80);
    }
}

using Steps = std::function<void(HDC work, HDC screen)>;

/// What is on the screen afterwards, and on the working surface. @param isExposed it has pixels before it is drawn on
std::vector<std::uint32_t> Seen(const Steps& steps, bool isExposed) {
    const Surface screen(CreateMemorySurface(kSide + 20, kSide + 20));
    const WorkingSurface work(nullptr, kSide, kSide);
    if (isExposed)
        GetPixels(work);
    steps(work, screen);
    std::vector<std::uint32_t> seen;
    for (HDC surface : {static_cast<HDC>(screen), static_cast<HDC>(work)}) {
        const PixelView view = GetPixels(surface);
        for (int y = 0; y < view.height; ++y)
            seen.insert(seen.end(), view.pixels + y * view.stride, view.pixels + y * view.stride + view.width);
    }
    return seen;
}

void Copy(HDC from, HDC to, int x, int y) { EXPECT_TRUE(BitBlt(to, x, y, kSide, kSide, from, 0, 0, SRCCOPY)); }

TEST(Drafts, LookAsIfTheyHadBeenPixels) {
    const std::pair<const char*, Steps> cases[] = {
        {"undrawn it is black",
         [](HDC work, HDC screen) {
             Copy(work, screen, 5, 5);
             EXPECT_EQ(GetPixels(screen).pixels[7 * (kSide + 20) + 7], 0xFF000000U);
         }},
        {"whole, thrice, drawn on between, beyond the edge",
         [](HDC work, HDC screen) {
             DrawAll(work);
             Copy(work, screen, 5, 5);
             TextOutA(work, 3, 60, "on", -1);
             Copy(work, screen, 40, -30);
             Copy(work, screen, -10, 12);
         }},
        {"lines with a rectangle between them in time, not in space",
         [](HDC work, HDC screen) {
             DrawLinesApart(work);
             Copy(work, screen, 5, 5);
         }},
        {"again where it was, with what is new on it",
         [](HDC work, HDC screen) {
             DrawAll(work);
             Copy(work, screen, 5, 5);
             DrawLines(work);
             Copy(work, screen, 5, 5);
         }},
        {"again where it was, but not on what it was",
         [](HDC work, HDC screen) {
             DrawAll(work);
             Copy(work, screen, 5, 5);
             DrawLines(screen);
             Copy(work, screen, 5, 5);
             const melkar::ScopedObject other(screen, CreateCompatibleBitmap(screen, kSide + 20, kSide + 20));
             Copy(work, screen, 5, 5);
         }},
        {"again where it was, but all of it new",
         [](HDC work, HDC screen) {
             DrawAll(work);
             Copy(work, screen, 5, 5);
             Rectangle(work, 0, 0, kSide, kSide);
             DrawAll(work);
             Copy(work, screen, 5, 5);
         }},
        {"a part, scaled, by and",
         [](HDC work, HDC screen) {
             DrawAll(work);
             BitBlt(screen, 3, 4, 30, 20, work, 20, 25, SRCCOPY);
             StretchBlt(screen, 30, 30, 70, 50, work, 0, 0, kSide, kSide, SRCCOPY);
             BitBlt(screen, 0, 0, kSide, kSide, work, 0, 0, SRCAND);
         }},
        {"longer than a draft, in the middle of what is copied to it",
         [](HDC work, HDC screen) {
             const WorkingSurface other(nullptr, kSide, kSide);
             DrawDiscs(other, kManyDiscs / 2);
             DrawDiscs(work, kManyDiscs / 2);
             DrawAll(other);
             Copy(other, work, 17, 11);
             Copy(work, screen, 5, 5);
         }},
        {"onto itself",
         [](HDC work, HDC screen) {
             DrawAll(work);
             Copy(work, work, 9, 4);
             Copy(work, screen, 5, 5);
         }},
        {"of pixels, small and large",
         [](HDC work, HDC screen) {
             DrawAll(screen);
             BitBlt(work, 5, 5, 20, 20, screen, 10, 10, SRCCOPY);
             BitBlt(work, 10, 10, 90, 90, screen, 0, 0, SRCPAINT);
             Copy(work, screen, 5, 5);
         }},
        {"on a screen whose memory is seen",
         [](HDC work, HDC screen) {
             GetPixels(screen);
             DrawAll(work);
             Copy(work, screen, 5, 5);
         }},
        {"lines that wait",
         [](HDC work, HDC screen) {
             DrawLines(work);
             Copy(work, screen, 5, 5);
             LineTo(work, 5, 80);
             Copy(work, screen, 5, 5);
         }},
        {"lines that wait, with their picture",
         [](HDC work, HDC screen) {
             DrawLines(work);
             {
                 const melkar::ScopedObject other(work, CreateCompatibleBitmap(screen, 1, 1));
                 GetPixels(work); // looks at the other one: the lines are not of that
             }
             Copy(work, screen, 5, 5);
         }},
        {"lines that wait, below a copy",
         [](HDC work, HDC screen) {
             DrawLines(work);
             BitBlt(work, 0, 0, 30, 40, screen, 0, 0, SRCCOPY);
             Copy(work, screen, 5, 5);
         }},
        {"lines on memory that was handed out",
         [](HDC work, HDC) {
             const PixelView seen = GetPixels(work);
             DrawLines(work);
             EXPECT_EQ(seen.pixels[20 * seen.stride + 30], 0xFFC82828U);
         }},
        {"by another thread",
         [](HDC work, HDC screen) {
             DrawAll(work);
             std::thread([&] {
                 Copy(work, screen, 5, 5);
                 DrawAll(work);
                 DrawAll(screen);
             }).join();
             Copy(work, screen, 8, 3);
         }},
    };
    for (const auto& [why, steps] : cases)
        EXPECT_TRUE(Seen(steps, false) == Seen(steps, true)) << why;
}

TEST(Drafts, ShowWhatLiesOnTopHoweverMuchIsFilledFirst) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        const Steps steps = [seed](HDC work, HDC screen) {
            DrawAcross(work, seed);
            Copy(work, screen, 5, 5);
        };
        EXPECT_TRUE(Seen(steps, false) == Seen(steps, true)) << seed;
    }
}

} // namespace
