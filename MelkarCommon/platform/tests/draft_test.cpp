// A compatible bitmap is drawn on before it has pixels: whatever is done with it, it must look as if it had had them
// from the first call on.

#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/platform/tests/surface.h>

#include <gtest/gtest.h>

#include <functional>
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

} // namespace
