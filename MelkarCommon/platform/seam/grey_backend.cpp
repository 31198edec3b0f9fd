#include <MelkarCommon/platform/seam/grey_backend.h>

#include <iterator>
#include <vector>

namespace melkar {

namespace {

class GreyBackend final : public Backend {
public:
    explicit GreyBackend(Backend& to) : m_to(to) {}

    void Flush() override { m_to.Flush(); }
    void SetClip(const RECT& clip) override { m_to.SetClip(clip); }
    void FillRect(const RECT& rect, Color color) override { m_to.FillRect(rect, GreyOf(color)); }
    void FillFramed(const RECT& outer, int width, Color frame, std::optional<Color> ground) override {
        m_to.FillFramed(outer, width, GreyOf(frame), ground ? std::optional(GreyOf(*ground)) : std::nullopt);
    }
    void FillShape(const Shape& shape, Color color) override { m_to.FillShape(shape, GreyOf(color)); }
    void StrokeShape(const Shape& shape, const Stroke& stroke) override { m_to.StrokeShape(shape, InGrey(stroke)); }
    void StrokePolyline(std::span<const POINT> points, const Stroke& stroke) override {
        m_to.StrokePolyline(points, InGrey(stroke));
    }
    void PaintText(const std::shared_ptr<const TextLayout>& layout, std::size_t line, POINT at, int escapement,
                   Color color, const RECT& clip) override {
        m_to.PaintText(layout, line, at, escapement, GreyOf(color), clip);
    }
    void Blit(const RECT& target, const PixelBuffer& pixels, const RECT& source, DWORD operation) override {
        if (!CanBlit(pixels, source, operation))
            return;
        const int width = source.right - source.left;
        const int height = source.bottom - source.top;
        std::vector<Color> grey;
        for (int y = source.top; y < source.bottom; ++y)
            std::transform(PixelAt(pixels, source.left, y), PixelAt(pixels, source.right, y), std::back_inserter(grey),
                           GreyOf);
        m_to.Blit(target, {grey.data(), width, height, width}, {0, 0, width, height}, operation);
    }

private:
    static Stroke InGrey(const Stroke& stroke) {
        Stroke grey = stroke;
        grey.color = GreyOf(stroke.color);
        grey.gapColor = GreyOf(stroke.gapColor);
        return grey;
    }

    Backend& m_to;
};

} // namespace

std::unique_ptr<Backend> MakeGreyBackend(Backend& to) { return std::make_unique<GreyBackend>(to); }

} // namespace melkar
