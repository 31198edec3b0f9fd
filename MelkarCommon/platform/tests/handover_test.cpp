// Surfaces that one thread fills and another one uses next.

#include <MelkarCommon/platform/tests/temp_workdir.h>

#include <MelkarCommon/platform/drawing.h>
#include <MelkarCommon/platform/scoped.h>
#include <MelkarCommon/platform/surface.h>

#include <gtest/gtest.h>

#include <barrier>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

using melkar::ScopedObject;

constexpr int kWidth = 200;
constexpr int kHeight = 60;

/// Texts that were never drawn before, and some that all threads draw.
void WriteWords(HDC surface, int round) {
    for (int i = 0; i < 10; ++i)
        TextOutA(surface, 5, 6 * i, ("words " + std::to_string(round * 10 + i)).c_str(), -1);
    TextOutA(surface, 100, 0, "steps", -1);
    TextOutA(surface, 100, 30, "1234", -1);
}

/// One of each way to keep what is drawn: pixels; a record; a page's record under a surface of pixels, whose texts
/// are those of pixels.
class Surfaces {
public:
    explicit Surfaces(HDC page) : m_pageRecord(CreateCompatibleBitmap(page, kWidth, kHeight)) {
        m_former = SelectObject(m_mixed, m_pageRecord);
    }
    ~Surfaces() {
        SelectObject(m_mixed, m_former);
        DeleteObject(m_pageRecord);
        for (HDC surface : {m_pixels, m_record, m_mixed})
            DeleteDC(surface);
    }
    Surfaces(const Surfaces&) = delete;
    Surfaces& operator=(const Surfaces&) = delete;

    /// Texts that all threads draw, some made of figures, and both records played onto the pixels.
    void Use(int round) {
        for (HDC surface : {m_pixels, m_record, m_mixed}) {
            WriteWords(surface, round); // in the font that the last thread left selected
            const ScopedObject font(surface, CreateFontA(-14, 0, 0, 0, 400, 0, 0, 0, 1, 0, 0, 2, 0, "DejaVu Sans"));
            WriteWords(surface, round);
        }
        for (HDC surface : {m_pixels, m_record, m_mixed})
            WriteWords(surface, round + 1000);
        BitBlt(m_pixels, 0, 0, kWidth, kHeight, m_record, 0, 0, SRCCOPY);
        BitBlt(m_pixels, 0, 0, kWidth, kHeight, m_mixed, 0, 0, SRCCOPY);
    }

private:
    HDC m_pixels = CreateMemorySurface(kWidth, kHeight);
    HDC m_record = CreateRecordingSurface(kWidth, kHeight);
    HDC m_mixed = CreateCompatibleDC(nullptr);
    HBITMAP m_pageRecord;
    HGDIOBJ m_former;
};

// A surface that keeps anything of the thread that used it (a face, the mask of a text) crashes here sooner or later;
// the thread sanitizer sees it at once.
TEST(Handover, SurfacesGoAroundAmongThreads) {
    constexpr int kThreads = 24;
    constexpr int kRounds = 6;
    const TempWorkdir work;
    const std::size_t before = LiveObjectCount();
    const HDC page = CreatePageSurface("page.pdf", PageFormat::Pdf, kWidth, kHeight, 96);
    std::vector<std::unique_ptr<Surfaces>> surfaces;
    for (int i = 0; i < kThreads; ++i)
        surfaces.push_back(std::make_unique<Surfaces>(page));
    surfaces[0]->Use(0); // the first face is this thread's
    std::barrier sync(kThreads);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&, i] {
            for (int round = 0; round < kRounds; ++round, sync.arrive_and_wait())
                surfaces[static_cast<std::size_t>((i + round) % kThreads)]->Use(round);
            surfaces[static_cast<std::size_t>(i)].reset();
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_TRUE(DeleteDC(page));
    EXPECT_EQ(LiveObjectCount(), before);
}

} // namespace
