// Surfaces that one thread fills and another one uses next.

#include <MelkarCommon/platform/tests/surface.h>
#include <MelkarCommon/platform/tests/temp_workdir.h>

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
/// are those of pixels; a draft, which keeps masks of the thread that drew it.
class Surfaces {
public:
    explicit Surfaces(HDC page) : m_mixed(page, kWidth, kHeight) {}

    /// Texts that all threads draw, some made of figures, and what keeps them played onto the pixels.
    void Use(int round) {
        const HDC surfaces[] = {m_pixels, m_record, m_mixed, m_draft};
        for (HDC surface : surfaces) {
            WriteWords(surface, round); // in the font that the last thread left selected
            const ScopedObject font(surface, CreateFontA(-14, 0, 0, 0, 400, 0, 0, 0, 1, 0, 0, 2, 0, "DejaVu Sans"));
            WriteWords(surface, round);
        }
        for (HDC surface : surfaces) {
            WriteWords(surface, round + 1000);
            BitBlt(m_pixels, 0, 0, kWidth, kHeight, surface, 0, 0, SRCCOPY);
        }
    }

private:
    Surface m_pixels{CreateMemorySurface(kWidth, kHeight)};
    Surface m_record{CreateRecordingSurface(kWidth, kHeight)};
    WorkingSurface m_mixed;
    WorkingSurface m_draft{nullptr, kWidth, kHeight};
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
