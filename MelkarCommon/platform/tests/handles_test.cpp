// Handles that don't fit: of another kind, or of something that is gone. The calls take them for null.

#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/surface.h>

#include <gtest/gtest.h>

#include <thread>

namespace {

/// A handle under another type, as a host's cast makes it.
template <class Handle> Handle As(HGDIOBJ handle) { return static_cast<Handle>(handle); }

class Handles : public testing::Test {
protected:
    ~Handles() override {
        DeleteObject(m_brush);
        DeleteDC(m_surface);
        EXPECT_EQ(LiveObjectCount(), m_before);
    }

    std::size_t m_before = LiveObjectCount();
    HDC m_surface = CreateMemorySurface(20, 10);
    HBRUSH m_brush = CreateSolidBrush(0);
};

TEST_F(Handles, OfNoSurfaceAreRefused) {
    const HDC gone = CreateMemorySurface(20, 10);
    EXPECT_TRUE(DeleteDC(gone));
    for (HDC handle : {As<HDC>(m_brush), gone, HDC{}}) {
        RECT box{0, 0, 9, 9};
        POINT point{7, 7};
        char text[] = "text";
        const bool refusals[] = {
            SelectObject(handle, GetStockObject(BLACK_PEN)) == nullptr,
            SetBkMode(handle, OPAQUE) == 0 && SetBkColor(handle, 1) == 0 && SetTextColor(handle, 1) == 0,
            GetDeviceCaps(handle, LOGPIXELSY) == 96 && GetDeviceCaps(handle, HORZRES) == 0,
            !MoveToEx(handle, 1, 1, &point) && point.x == 7 && !LineTo(handle, 5, 5),
            !Rectangle(handle, 0, 0, 5, 5) && !Ellipse(handle, 0, 0, 5, 5),
            !Pie(handle, 0, 0, 5, 5, 5, 0, 0, 5),
            !TextOutA(handle, 0, 0, text, 4) && DrawTextExA(handle, text, 4, &box, 0, nullptr) == 0,
            !BitBlt(handle, 0, 0, 5, 5, m_surface, 0, 0, SRCCOPY),
            !BitBlt(m_surface, 0, 0, 5, 5, handle, 0, 0, SRCCOPY),
            GetPixels(handle).pixels == nullptr && GetRecording(handle).empty(),
            WritePng(handle, "/nowhere.png") == -1,
            !DeleteDC(handle),
        };
        for (std::size_t call = 0; call < std::size(refusals); ++call)
            EXPECT_TRUE(refusals[call]) << "call " << call;
    }
}

TEST_F(Handles, OfNoObjectAreRefused) {
    const HDC other = CreateMemorySurface(5, 5);
    EXPECT_EQ(SelectObject(m_surface, other), nullptr) << "a surface is nothing to select";
    EXPECT_FALSE(DeleteObject(other)) << "a surface is no object";
    EXPECT_FALSE(FillRgn(m_surface, As<HRGN>(m_brush), m_brush));
    BITMAP picture{};
    EXPECT_EQ(GetObjectA(other, sizeof picture, &picture), 0);
    EXPECT_TRUE(DeleteDC(other)) << "nothing happened to it";
}

TEST_F(Handles, OfAnEndedThreadAreRefusedAsWell) {
    HPEN pen = nullptr;
    std::thread([&] { pen = CreatePen(PS_SOLID, 1, 0); }).join();
    std::thread([&] { EXPECT_TRUE(DeleteObject(pen)); }).join();
    EXPECT_EQ(SelectObject(m_surface, pen), nullptr);
    const HPEN next = CreatePen(PS_SOLID, 1, 0); // perhaps in the same place
    EXPECT_TRUE(DeleteObject(next));
    EXPECT_FALSE(DeleteObject(next));
}

TEST_F(Handles, TheSurfacesOwnPictureGoesWithIt) {
    const HDC surface = CreateMemorySurface(20, 10);
    const HBITMAP bitmap = CreateCompatibleBitmap(surface, 5, 5);
    const HGDIOBJ own = SelectObject(surface, bitmap);
    EXPECT_EQ(SelectObject(m_surface, own), nullptr) << "it belongs to its surface";
    DeleteDC(surface);
    EXPECT_EQ(SelectObject(m_surface, own), nullptr);
    EXPECT_FALSE(DeleteObject(own));
    EXPECT_TRUE(DeleteObject(bitmap)) << "no longer selected";
}

} // namespace
