// Calls that find no memory, at each place where they ask for it: they fail, throw nothing, and leave everything as it
// was; a page on which something is missing doesn't come to be.

#include <MelkarCommon/platform/tests/framed.h>
#include <MelkarCommon/platform/tests/surface.h>
#include <MelkarCommon/platform/tests/temp_workdir.h>
#include <MelkarCommon/platform/tests/told.h>

#include <MelkarCommon/platform/cairo/handles.h>
#include <MelkarCommon/platform/host_surfaces.h>
#include <MelkarCommon/platform/printing.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <new>
#include <span>

namespace {

thread_local long t_room = LONG_MAX; ///< so many pieces of memory are left to this thread

} // namespace

void* operator new(std::size_t size) {
    void* memory = t_room-- > 0 ? std::malloc(size > 0 ? size : 1) : nullptr;
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

using namespace melkar;

constexpr DOCINFOA kJob{sizeof kJob, "job", nullptr, nullptr, 0};

/// Runs a call with memory for no more than `room` pieces.
template <class Call> auto With(long room, const Call& call) {
    struct Limit {
        explicit Limit(long pieces) { t_room = pieces; }
        ~Limit() { t_room = LONG_MAX; }
    } const limit(room);
    return call();
}

class NoMemory : public testing::Test {
protected:
    NoMemory() {
        const POINT star[] = {{18, 6}, {20, 10}, {15, 7}, {21, 7}, {16, 10}};
        m_region = CreatePolygonRgn(star, 5, ALTERNATE);
        Prepare(m_pixels);
        Prepare(m_record);
    }
    ~NoMemory() override {
        DeleteDC(m_pixels);
        DeleteDC(m_record);
        EXPECT_TRUE(DeleteObject(m_pen) && DeleteObject(m_bitmap) && DeleteObject(m_region));
        EXPECT_EQ(LiveObjectCount(), m_before);
    }

    /// What stands on a surface before a call. The lines wait, and there is no room for more of them.
    void Prepare(HDC surface) const {
        DrawFramed(surface, {2, 2, 30, 30}, RGB(255, 0, 0), RGB(0, 0, 255), 1);
        SelectObject(surface, m_pen);
        MoveToEx(surface, 3, 3, nullptr);
        for (int i = 1; i < 4; ++i)
            LineTo(surface, 10 * i, 7 * i * i);
    }
    static bool Wrap(HDC surface) {
        char text[] = "Two lines, at the very least";
        RECT box{0, 0, 60, 60};
        return DrawTextExA(surface, text, -1, &box, DT_WORDBREAK, nullptr) > 0;
    }
    bool SelectAndBack(HDC surface) const {
        const HGDIOBJ former = SelectObject(surface, m_bitmap);
        return former != nullptr && SelectObject(surface, former) == m_bitmap;
    }

    /// Everything that draws; true if it succeeded.
    const std::pair<const char*, std::function<bool(HDC)>> m_calls[14] = {
        {"a line that goes on", [](HDC s) { return LineTo(s, 50, 50); }},
        {"a line elsewhere", [](HDC s) { return MoveToEx(s, 9, 9, nullptr) && LineTo(s, 50, 50); }},
        {"a frame", [](HDC s) { return Rectangle(s, 5, 5, 50, 50); }},
        {"an ellipse", [](HDC s) { return Ellipse(s, 5, 5, 51, 50); }},
        {"a pie", [](HDC s) { return Pie(s, 5, 5, 50, 50, 50, 5, 5, 5); }},
        {"a region", [&](HDC s) { return FillRgn(s, m_region, static_cast<HBRUSH>(GetStockObject(4))); }},
        {"a text", [](HDC s) { return TextOutA(s, 5, 5, "123 words", -1); }},
        {"a text that wraps", Wrap},
        {"a copy of pixels", [&](HDC s) { return BitBlt(s, 5, 5, 20, 20, m_pixels, 0, 0, SRCCOPY); }},
        {"a copy of pixels, scaled", [&](HDC s) { return StretchBlt(s, 5, 5, 9, 9, m_pixels, 0, 0, 20, 20, SRCCOPY); }},
        {"a copy of a record", [&](HDC s) { return BitBlt(s, 5, 5, 20, 20, m_record, 0, 0, SRCCOPY); }},
        {"a copy of a record, as a mask", [&](HDC s) { return BitBlt(s, 5, 5, 20, 20, m_record, 0, 0, SRCAND); }},
        {"another bitmap", [&](HDC s) { return SelectAndBack(s); }},
        {"a copy of a surface onto itself", [&](HDC s) { return BitBlt(s, 9, 9, 20, 20, s, 0, 0, SRCCOPY); }},
    };

    const std::size_t m_before = LiveObjectCount();
    const TempWorkdir m_work;
    const Told m_told; // which asks for memory itself
    const HPEN m_pen = CreatePen(PS_SOLID, 3, RGB(0, 99, 0));
    const HBITMAP m_bitmap = CreateCompatibleBitmap(nullptr, 5, 5);
    const HDC m_pixels = CreateMemorySurface(20, 20);
    const HDC m_record = CreateRecordingSurface(20, 20);
    HRGN m_region;
};

/// Runs `call(room)` with ever more memory, nothing being there from the last time, until it succeeds.
template <class Call> void UntilDone(const char* what, const Call& call) {
    for (long room = 0; room < 1000; ++room) {
        TrimMemory();
        if (call(room))
            return;
    }
    ADD_FAILURE() << what << " never succeeds";
}

TEST_F(NoMemory, DrawsNothing) {
    std::vector<std::uint32_t> memory(64 * 64);
    const std::pair<const char*, std::function<HDC()>> makers[] = {
        {"pixels", [] { return CreateMemorySurface(64, 64); }},
        {"the host's pixels", [&] { return WrapPixels(memory.data(), 64, 64, 256); }},
        {"finer pixels", [] { return CreateScaledSurface(64, 64, 1.5); }},
        {"a record", [] { return CreateRecordingSurface(64, 64); }},
    };
    for (const auto& [kind, make] : makers)
        for (const auto& [what, call] : m_calls) {
            SCOPED_TRACE(std::string(what) + " on " + kind);
            UntilDone(what, [&, &make = make, &call = call](long room) {
                const Surface untouched(make());
                const Surface surface(make());
                Prepare(untouched);
                Prepare(surface);
                const bool isDone = With(room, [&] { return call(surface); });
                EXPECT_TRUE(isDone || GetRecording(surface) == GetRecording(untouched)) << room;
                EXPECT_TRUE(call(surface)) << "it goes on";
                return isDone;
            });
        }
}

// Those of a face that has asked for many come from ready-made glyphs, in slots that they share.
TEST_F(NoMemory, DrawsTheNextFigure) {
    UntilDone("a figure", [&](long room) {
        const Surface surface(CreateMemorySurface(64, 64));
        for (int figure = 0; figure < 50; ++figure)
            TextOutA(surface, 0, 0, std::to_string(figure).c_str(), -1);
        const auto draw = [&] { return TextOutA(surface, 0, 0, "777", -1); };
        const bool isDone = With(room, draw);
        EXPECT_TRUE(draw()) << room;
        return isDone;
    });
}

TEST_F(NoMemory, LeavesNoFileOfAPageThatLacksSomething) {
    for (const PageFormat format : {PageFormat::Svg, PageFormat::Pdf})
        for (const auto& [what, call] : std::span(m_calls).first(12)) { // the others are refused on a page
            SCOPED_TRACE(std::string(what) + (format == PageFormat::Pdf ? " on PDF" : " on SVG"));
            UntilDone(what, [&, &call = call](long room) {
                const HDC page = CreatePageSurface("page", format, 64, 64, 96);
                Prepare(page);
                const bool isDone = With(room, [&] { return call(page); });
                EXPECT_EQ(DeleteDC(page), isDone) << room;
                EXPECT_EQ(std::filesystem::remove("page"), isDone) << room;
                return isDone;
            });
        }
}

TEST_F(NoMemory, PrintsNothing) {
    for (const bool endsPage : {false, true})
        UntilDone("a document", [&](long room) {
            const HDC printer = CreateDCA("WINSPOOL", "out.pdf", nullptr, nullptr);
            SelectObject(printer, m_pen);
            const bool isDone = With(room, [&] {
                const bool isStarted = StartDocA(printer, &kJob) > 0 && StartPage(printer) > 0;
                LineTo(printer, 90, 5); // waits
                return isStarted && (!endsPage || EndPage(printer) > 0) && EndDoc(printer) > 0;
            });
            EXPECT_EQ(std::filesystem::remove("out.pdf"), isDone) << room;
            AbortDoc(printer);
            EXPECT_EQ(EndDoc(printer), SP_ERROR) << "it has ended, or never began";
            EXPECT_TRUE(DeleteDC(printer));
            return isDone;
        });
}

TEST_F(NoMemory, MakesNothing) {
    ASSERT_EQ(WritePng(m_pixels, "picture.png"), 0);
    std::uint32_t pixel = 0;
    const CairoSurface image(cairo_image_surface_create(CAIRO_FORMAT_RGB24, 9, 9));
    const CairoContext host(cairo_create(image.get()));
    const POINT corners[] = {{0, 0}, {9, 0}, {0, 9}};
    const std::pair<const char*, std::function<HDC()>> surfaces[] = {
        {"pixels", [] { return CreateMemorySurface(9, 9); }},
        {"the host's pixels", [&] { return WrapPixels(&pixel, 1, 1, 4); }},
        {"a record", [] { return CreateRecordingSurface(9, 9); }},
        {"a compatible one", [&] { return CreateCompatibleDC(m_record); }},
        {"a page", [] { return CreatePageSurface("page", PageFormat::Svg, 9, 9, 96); }},
        {"a context of the host's", [&] { return CreateContextSurface(host.get(), 9, 9); }},
        {"a printer", [] { return CreateDCA("WINSPOOL", "out.pdf", nullptr, nullptr); }},
    };
    for (const auto& [what, make] : surfaces)
        UntilDone(what, [&make = make](long room) { return DeleteDC(With(room, make)); });
    cairo_restore(host.get());
    EXPECT_EQ(cairo_status(host.get()), CAIRO_STATUS_INVALID_RESTORE) << "the host's context kept what was saved on it";
    m_work.Write("conf/neighbour", "");
    UntilDone("a page in a folder that is swept", [&](long room) {
        EXPECT_EQ(WritePng(m_pixels, "elsewhere.png"), 0);
        return DeleteDC(With(room, [] { return CreatePageSurface("../conf/page", PageFormat::Svg, 9, 9, 96); }));
    });
    const std::pair<const char*, std::function<HGDIOBJ()>> objects[] = {
        {"pixels", [&]() -> HGDIOBJ { return CreateCompatibleBitmap(m_pixels, 5, 5); }},
        {"a record", [&]() -> HGDIOBJ { return CreateCompatibleBitmap(m_record, 5, 5); }},
        {"a region", [&]() -> HGDIOBJ { return CreatePolygonRgn(corners, 3, WINDING); }},
        {"a file's", [] { return LoadImageA(nullptr, "picture.png", IMAGE_BITMAP, 9, 9, LR_LOADFROMFILE); }},
    };
    for (const auto& [what, make] : objects)
        UntilDone(what, [&make = make](long room) { return DeleteObject(With(room, make)); });
    UntilDone("a look", [&](long room) {
        return With(room,
                    [&] { return GetPixels(m_pixels).pixels != nullptr && WritePng(m_pixels, "again.png") == 0; });
    });
}

} // namespace
