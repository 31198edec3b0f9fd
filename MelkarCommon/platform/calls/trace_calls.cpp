#include <MelkarCommon/platform/calls/failing.h>
#include <MelkarCommon/platform/pixels/pixel_backend.h>
#include <MelkarCommon/platform/pixels/pixel_memory.h>
#include <MelkarCommon/platform/record/recording_parts.h>
#include <MelkarCommon/platform/tracing.h>

#include <algorithm>
#include <new>
#include <span>

namespace melkar {

namespace {

/// False for what stands elsewhere. The ink of a text may reach beyond its box.
bool MayDrawAt(const RecordedOp& op, POINT at) {
    const Box box = BoxOf(op);
    return std::holds_alternative<TextOp>(op.verb) ||
           (at.x >= box.left && at.x < box.right && at.y >= box.top && at.y < box.bottom);
}

/// One pixel of a picture; whatever is drawn on the others doesn't count.
class OnePixel {
public:
    OnePixel(const RecordPicture& record, POINT at)
        : m_memory(record.Size().width, record.Size().height), m_at(at),
          m_backend(m_memory.AreThere() ? MakePixelBackend(m_memory.Buffer()) : throw std::bad_alloc()) {
        Set(record.Ground());
    }

    Color Now() const { return *PixelAt(m_memory.Buffer(), m_at.x, m_at.y); }
    void Set(Color color) { *PixelAt(m_memory.Buffer(), m_at.x, m_at.y) = color; }

    /// @return whether the operation draws on it, be it in the colour that it has: on another one that shows
    bool Draw(const RecordedOp& op) {
        constexpr Color kAllColors = 0xFFFFFFU;
        const Color before = Now();
        Play(op);
        const Color after = Now();
        if (after != before)
            return true;
        Set(before ^ kAllColors);
        Play(op);
        const bool isDrawn = Now() != (before ^ kAllColors);
        Set(after);
        return isDrawn;
    }

private:
    /// All of it: a clip changes the coverage at the edges of shapes.
    void Play(const RecordedOp& op) {
        const RECT whole{0, 0, m_memory.Buffer().width, m_memory.Buffer().height};
        Replay(std::span(&op, 1), *m_backend, whole, {0, 0}, whole);
    }

    OwnPixels m_memory;
    POINT m_at;
    std::unique_ptr<Backend> m_backend;
};

/// Which part, alone on `before`, draws on the pixel; the first of all if it takes several. Leaves it as it is.
std::size_t PartThatDraws(const std::vector<RecordedOp>& parts, OnePixel& pixel, Color before) {
    const Color now = pixel.Now();
    const auto found = std::find_if(parts.begin(), parts.end(), [&](const RecordedOp& part) {
        pixel.Set(before);
        return pixel.Draw(part);
    });
    pixel.Set(now);
    return found != parts.end() ? static_cast<std::size_t>(found - parts.begin()) : 0;
}

/// Null if the surface keeps none.
const RecordPicture* TraceOn(HDC surface) {
    if (!IsSurface(surface) || !IsTraced(surface->device))
        return nullptr;
    Picture* picture = surface->Shown();
    return picture ? RecordOf(*picture) : nullptr;
}

bool IsOn(const RecordPicture& record, POINT pixel) {
    return pixel.x >= 0 && pixel.y >= 0 && pixel.x < record.Size().width && pixel.y < record.Size().height;
}

std::vector<PixelLayer> LayersOf(const RecordPicture& record, POINT at) {
    std::vector<PixelLayer> layers;
    OnePixel pixel(record, at);
    std::size_t line = 0;
    for (const RecordedOp& op : record.Ops()) {
        const Color before = pixel.Now();
        const std::vector<RecordedOp> parts = PartsOf(op);
        if (MayDrawAt(op, at) && pixel.Draw(op)) {
            const Color now = pixel.Now();
            const std::size_t part = parts.size() > 1 ? PartThatDraws(parts, pixel, before) : 0;
            layers.push_back({line + part, RGB(RedOf(now), GreenOf(now), BlueOf(now))});
        }
        line += parts.size();
    }
    return layers;
}

} // namespace

std::vector<TracedLine> TraceOf(HDC surface) {
    return OrFailure([&] {
        std::vector<TracedLine> lines;
        if (const RecordPicture* record = TraceOn(surface))
            for (std::size_t op = 0; op < record->Ops().size(); ++op) {
                const StepName* step = record->StepOf(op);
                for (const std::string& line : LinesOf(record->Ops()[op]))
                    lines.push_back({line, step ? *step : StepName()});
            }
        return lines;
    });
}

std::vector<PixelLayer> LayersAt(HDC surface, POINT pixel) {
    return OrFailure([&] {
        const RecordPicture* record = TraceOn(surface);
        return record && IsOn(*record, pixel) ? LayersOf(*record, pixel) : std::vector<PixelLayer>();
    });
}

} // namespace melkar
