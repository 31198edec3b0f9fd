// The rasteriser of AGG by hand, for the shapes of a day: no texts.

#include "work.h"

#include <agg2/agg_conv_stroke.h>
#include <agg2/agg_path_storage.h>
#include <agg2/agg_pixfmt_rgba.h>
#include <agg2/agg_rasterizer_scanline_aa.h>
#include <agg2/agg_renderer_base.h>
#include <agg2/agg_renderer_scanline.h>
#include <agg2/agg_scanline_u.h>

#include <cstdio>
#include <vector>

namespace {

using Pixels = agg::pixfmt_bgra32;
using Base = agg::renderer_base<Pixels>;

class Agg : public Peer {
public:
    Agg()
        : m_memory(std::size_t{4} * DayData::kWidth * DayData::kHeight),
          m_buffer(m_memory.data(), DayData::kWidth, DayData::kHeight, 4 * DayData::kWidth), m_pixels(m_buffer),
          m_base(m_pixels) {}

    bool HasMonth() const override { return false; }
    bool HasDay() const override { return true; }

    void Draw(const DayData& day) override {
        m_base.clear(agg::rgba8(255, 255, 255));
        const agg::rgba8 pale(198, 206, 216);
        for (int level = 1; level <= DayData::kLevels; ++level)
            m_base.copy_hline(kLeft, int(YOf(level)), kRight, pale);
        Bar(0, YOf(9.5), 40, YOf(6.5), agg::rgba8(226, 102, 80));
        Bar(0, YOf(6.5), 40, YOf(3.5), agg::rgba8(250, 214, 140));
        Bar(0, YOf(3.5), 40, YOf(0.5), agg::rgba8(112, 150, 200));
        for (const int minute : DayData::kEvents) {
            const double x = kLeft + minute * double(kRight - kLeft) / 1440;
            agg::path_storage mark;
            mark.move_to(x, kBottom + 6);
            mark.line_to(x - 7, kBottom + 20);
            mark.line_to(x + 7, kBottom + 20);
            mark.close_polygon();
            Fill(mark, agg::rgba8(206, 84, 30));
        }
        for (int hour = 0; hour < 24; ++hour)
            m_base.copy_vline(kLeft + hour * (kRight - kLeft) / 24, kBottom - 3, kBottom + 4, agg::rgba8(0, 0, 0));
        agg::path_storage profile;
        profile.move_to(kLeft, kBottom);
        for (std::size_t i = 0; i < day.intensity.size(); ++i)
            profile.line_to(kLeft + double(i) * (kRight - kLeft) / DayData::kValues, YOf(day.intensity[i]));
        profile.line_to(kRight, kBottom);
        Fill(profile, agg::rgba8(96, 140, 190));
        agg::conv_stroke<agg::path_storage> outline(profile);
        outline.width(1);
        Fill(outline, pale);
        for (int level = 1; level <= DayData::kLevels; ++level) {
            const double minutes = std::min(day.minutes[static_cast<std::size_t>(level - 1)], 40.0);
            Bar(780, YOf(level + 0.5), 780 + minutes * 100 / 40, YOf(level - 0.5), agg::rgba8(112, 150, 200));
        }
    }

    /// A portable pixmap: the rasteriser has no encoder.
    void Write(const char* path) override {
        std::FILE* file = std::fopen(path, "wb");
        if (!file)
            return;
        std::fprintf(file, "P6\n%d %d\n255\n", DayData::kWidth, DayData::kHeight);
        for (std::size_t i = 0; i < m_memory.size(); i += 4) {
            const unsigned char rgb[] = {m_memory[i + 2], m_memory[i + 1], m_memory[i]};
            std::fwrite(rgb, 1, 3, file);
        }
        std::fclose(file);
    }

private:
    static constexpr int kLeft = 44;
    static constexpr int kRight = 750;
    static constexpr int kTop = 27;
    static constexpr int kBottom = 130;
    static double YOf(double level) { return kBottom - level * (kBottom - kTop) / 10; }

    void Bar(double left, double top, double right, double bottom, agg::rgba8 color) {
        m_base.copy_bar(int(left), int(top), int(right), int(bottom), color);
    }

    template <class Path> void Fill(Path& path, agg::rgba8 color) {
        m_rasterizer.reset();
        m_rasterizer.add_path(path);
        agg::render_scanlines_aa_solid(m_rasterizer, m_scanline, m_base, color);
    }

    std::vector<unsigned char> m_memory;
    agg::rendering_buffer m_buffer;
    Pixels m_pixels;
    Base m_base;
    agg::rasterizer_scanline_aa<> m_rasterizer;
    agg::scanline_u8 m_scanline;
};

} // namespace

int main(int argc, char** argv) {
    Agg agg;
    return RunPeer(argc, argv, agg);
}
