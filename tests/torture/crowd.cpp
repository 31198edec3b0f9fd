// Eight threads draw all kinds, and surfaces that one more began, while another prints: the bytes are those of one
// thread.

#include "trial.h"

#include <atomic>
#include <map>
#include <mutex>
#include <queue>
#include <thread>

namespace torture {
namespace {

constexpr int kPainters = 8;

struct Expected {
    std::string pixels;
    std::string record;
    std::string svg;
};

/// A surface on its way to the thread that takes it next.
struct Begun {
    HDC surface;
    const melkar::KindRow* kind;
};

class HandOver {
public:
    void Put(const Begun& begun) {
        const std::lock_guard lock(m_mutex);
        m_waiting.push(begun);
    }
    bool Take(Begun& begun) {
        const std::lock_guard lock(m_mutex);
        if (m_waiting.empty())
            return false;
        begun = m_waiting.front();
        m_waiting.pop();
        return true;
    }
    bool IsFull() {
        const std::lock_guard lock(m_mutex);
        return m_waiting.size() >= kPainters;
    }

private:
    std::mutex m_mutex;
    std::queue<Begun> m_waiting;
};

} // namespace

Tally Crowd(const Deadline& end) {
    const Host host;
    const auto kinds = Kinds();
    std::map<const melkar::KindRow*, Expected> alone;
    for (const melkar::KindRow* kind : kinds)
        alone[kind] = {PixelsOf(*kind), RecordOf(*kind), PageOf(*kind, PageFormat::Svg, "../data/alone.svg")};
    const melkar::KindRow& printed = *melkar::FindKind("steps");
    Print(printed, "../data/alone.pdf");
    const std::string document = ReadFile("../data/alone.pdf");
    std::atomic<long> pictures = 0;
    std::atomic<long> handed = 0;
    std::atomic<long> documents = 0;
    std::atomic<long> faults = 0;
    HandOver handOver;
    const auto finish = [&](const Begun& begun) { // what another thread drew
        faults += GetRecording(begun.surface) == alone.at(begun.kind).record ? 0 : 1;
        DeleteDC(begun.surface);
        ++handed;
    };
    const auto paint = [&](int painter) {
        const std::string page = "../data/" + std::to_string(painter) + ".svg";
        for (int i = painter; !end.IsOver(); ++i, pictures += 3) {
            const melkar::KindRow* kind = kinds[static_cast<std::size_t>(i) % kinds.size()];
            const Expected& expected = alone.at(kind);
            faults += PixelsOf(*kind) == expected.pixels ? 0 : 1;
            faults += RecordOf(*kind) == expected.record ? 0 : 1;
            faults += PageOf(*kind, PageFormat::Svg, page) == expected.svg ? 0 : 1;
            if (Begun begun{}; handOver.Take(begun))
                finish(begun);
        }
    };
    const auto print = [&] {
        for (; !end.IsOver(); ++documents)
            faults += Print(printed, "../data/printed.pdf") > 0 && ReadFile("../data/printed.pdf") == document ? 0 : 1;
    };
    const auto begin = [&] {
        for (std::size_t i = 0; !end.IsOver(); ++i) {
            const Begun begun{CreateRecordingSurface(kWidth, kHeight), kinds[i % kinds.size()]};
            Draw(*begun.kind, begun.surface, true);
            handOver.Put(begun);
            while (handOver.IsFull() && !end.IsOver())
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < kPainters; ++i)
        threads.emplace_back(paint, i);
    threads.emplace_back(print);
    threads.emplace_back(begin);
    for (std::thread& thread : threads)
        thread.join();
    for (Begun begun{}; handOver.Take(begun);)
        finish(begun);
    faults += LiveObjectCount() == 0 ? 0 : 1;
    const bool hasAll = pictures > 0 && handed > 0 && documents > 0;
    return {hasAll ? pictures.load() : 0, faults,
            "pictures by eight threads; " + std::to_string(handed) + " surfaces handed on, " +
                std::to_string(documents) + " documents printed"};
}

} // namespace torture
